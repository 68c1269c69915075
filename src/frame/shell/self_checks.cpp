#include "frame/shell/self_checks.h"

#include <cstdint>

#include "frame/base/checked_assert.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"

bool RoundingHolds() {
    struct Sample {
        double value;
        std::int64_t rounded;
    };
    constexpr Sample samples[] = {
        {0.0, 0}, {0.49, 0}, {0.5, 1}, {0.51, 1}, {1.0, 1}, {1.5, 2}, {2.5, 3}, {99.75, 100}, {1e9 + 0.5, 1000000001},
    };
    for (const Sample& sample : samples) {
        if (VorkaUtils::RoundToInteger(sample.value) != sample.rounded) return false;
        if (VorkaUtils::RoundToInteger(-sample.value) != -sample.rounded) return false;
    }
    return true;
}

void RequireSelfCheck(bool ok, std::string_view description) {
    // The report has carried this condition and this file from the first version on; those who collect reports know it.
    if (!ok) FailAssertion("ok", "os_dependent", __LINE__, description);
}

void RunSelfChecks() { RequireSelfCheck(RoundingHolds(), vocabulary::rounding_functions_failed); }
