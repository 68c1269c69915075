#include "interfaces/jobs.h"

#include <array>

#include "bitbases/bitbase_generator.h"
#include "frame/logfile.h"
#include "frame/os_dependent.h"
#include "frame/text_utilities.h"
#include "frame/vocabulary.h"

namespace VorkaInterfaces {

namespace {

/// A bitbase of its own file, read out of the tablebases.
struct GeneratedBitbase {
    std::string_view word;
    std::string_view name;
    std::string_view file;
    void (*generate)(const std::string& path);
};
constexpr std::array generated_bitbases{
    GeneratedBitbase{vocabulary::job_two_pawns, vocabulary::generating_two_pawns, vocabulary::two_pawns_file,
                     VorkaGenerator::GenerateTwoPawnsBitbases},
    GeneratedBitbase{vocabulary::job_rammed_pawn, vocabulary::generating_rammed_pawn, vocabulary::rammed_pawn_file,
                     VorkaGenerator::GenerateRammedPawnBitbases},
};
struct VerifiedBitbase {
    std::string_view word;
    void (*verify)(VorkaGenerator::VerificationHandler& handler);
};
constexpr std::array verified_bitbases{
    VerifiedBitbase{vocabulary::job_single_pawn, VorkaGenerator::VerifySinglePawnBitbases},
    VerifiedBitbase{vocabulary::job_two_pawns, VorkaGenerator::VerifyTwoPawnsBitbases},
    VerifiedBitbase{vocabulary::job_rammed_pawn, VorkaGenerator::VerifyRammedPawnBitbases},
};

/// Writes one file beside the executable. A file that stands there is kept, whatever is in it.
class GenerateBitbasesJob final : public AbstractJob {
  public:
    explicit GenerateBitbasesJob(const GeneratedBitbase& bitbase) : bitbase_(bitbase) {}
    void run() override {
        vlog << bitbase_.name << vocabulary::job_dots;
        vlog.Flush();
        const std::string path = ExecutableDirectory() + '/' + std::string(bitbase_.file);
        if (FileExists(path)) {
            vlog << vocabulary::job_skipped_file_exists;
            return;
        }
        const Timestamp start = Timestamp::Now();
        try {
            bitbase_.generate(path);
        } catch (const VorkaGenerator::GenerationFailed& error) {
            vlog << vocabulary::job_failed;
            throw JobFailedException(error.text());
        }
        vlog << vocabulary::generation_done << ElapsedMilliseconds(start, Timestamp::Now()) / 1000
             << vocabulary::generation_seconds;
    }
    [[nodiscard]] std::string_view name() const override { return bitbase_.name; }

  private:
    const GeneratedBitbase bitbase_;
};

/// Compares one bitbase with the tablebases. One that is not loaded is skipped.
class VerifyBitbasesJob final : public AbstractJob {
  public:
    explicit VerifyBitbasesJob(const VerifiedBitbase& bitbase) : bitbase_(bitbase) {}
    void run() override {
        VorkaGenerator::DefaultVerificationHandler handler;
        try {
            bitbase_.verify(handler);
        } catch (const VorkaGenerator::VerificationFailed& error) {
            handler.aborted();
            throw JobFailedException(error.text());
        }
    }
    [[nodiscard]] std::string_view name() const override { return bitbase_.word; }

  private:
    const VerifiedBitbase bitbase_;
};

/// Words, or what stands between quotes and brackets.
std::vector<std::string> SplitIntoWords(const std::string& words) {
    try {
        return VorkaUtils::tokenize(words, VorkaUtils::white_space, "\"'[{", "\"']}");
    } catch (const VorkaUtils::tokenize_exception&) {
        throw AbstractJob::JobFailedException(std::string(vocabulary::could_not_tokenize_the_input_string));
    }
}

[[noreturn]] void RefuseWord(std::string_view text, const std::string& word) {
    throw AbstractJob::JobFailedException(std::string(text) + word + '\'');
}

}  // namespace

JobList generationJobs(const std::string& words) {
    JobList jobs;
    for (const std::string& word : SplitIntoWords(words)) {
        if (word == vocabulary::job_single_pawn) {
            throw AbstractJob::JobFailedException(std::string(vocabulary::single_pawn_generation_disabled));
        }
        if (word == vocabulary::job_generic) {
            throw AbstractJob::JobFailedException(std::string(vocabulary::generic_generation_disabled));
        }
        const std::size_t before = jobs.size();
        for (const GeneratedBitbase& bitbase : generated_bitbases) {
            if (word == bitbase.word || word == vocabulary::all) {
                jobs.push_back(std::make_unique<GenerateBitbasesJob>(bitbase));
            }
        }
        if (jobs.size() == before) RefuseWord(vocabulary::could_not_parse_generation_job, word);
    }
    return jobs;
}

JobList verificationJobs(const std::string& words) {
    JobList jobs;
    for (const std::string& word : SplitIntoWords(words)) {
        if (word == vocabulary::job_generic) {
            throw AbstractJob::JobFailedException(std::string(vocabulary::generic_verification_not_supported));
        }
        const std::size_t before = jobs.size();
        for (const VerifiedBitbase& bitbase : verified_bitbases) {
            if (word == bitbase.word || word == vocabulary::all)
                jobs.push_back(std::make_unique<VerifyBitbasesJob>(bitbase));
        }
        if (jobs.size() == before) RefuseWord(vocabulary::could_not_parse_verify_job, word);
    }
    return jobs;
}

void listGenerationJobs() {
    vlog << vocabulary::available_generation_jobs;
    for (const GeneratedBitbase& bitbase : generated_bitbases) vlog << bitbase.word << '\n';
}

void listVerificationJobs() {
    vlog << vocabulary::available_verification_jobs;
    for (const VerifiedBitbase& bitbase : verified_bitbases) vlog << bitbase.word << '\n';
}

}  // namespace VorkaInterfaces
