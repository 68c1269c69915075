#include "interfaces/jobs.h"

#include <array>

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
};
constexpr std::array generated_bitbases{
    GeneratedBitbase{vocabulary::job_two_pawns, vocabulary::generating_two_pawns, vocabulary::two_pawns_file},
    GeneratedBitbase{vocabulary::job_rammed_pawn, vocabulary::generating_rammed_pawn, vocabulary::rammed_pawn_file},
};
constexpr std::array verified_bitbases{vocabulary::job_single_pawn, vocabulary::job_two_pawns,
                                       vocabulary::job_rammed_pawn};

/// There is no reader of tablebases in this build, and a bitbase can't be generated without one.
class GenerateBitbasesJob final : public AbstractJob {
  public:
    explicit GenerateBitbasesJob(const GeneratedBitbase& bitbase) : bitbase_(bitbase) {}
    void run() override {
        vlog << bitbase_.name << vocabulary::job_dots;
        if (FileExists(ExecutableDirectory() + '/' + std::string(bitbase_.file))) {
            vlog << vocabulary::job_skipped_file_exists;
            return;
        }
        vlog << vocabulary::job_failed;
        throw JobFailedException(std::string(vocabulary::tablebases_not_loaded));
    }
    [[nodiscard]] std::string_view name() const override { return bitbase_.name; }

  private:
    const GeneratedBitbase bitbase_;
};

/// A bitbase that is not loaded is skipped; the built-in one can't be compared with anything without tablebases.
class VerifyBitbasesJob final : public AbstractJob {
  public:
    explicit VerifyBitbasesJob(std::string_view word) : word_(word) {}
    void run() override {
        vlog << vocabulary::verifying_bitbase << word_ << vocabulary::verifying_dots;
        if (word_ != vocabulary::job_single_pawn) {
            vlog << vocabulary::job_skipped;
            return;
        }
        vlog << vocabulary::job_aborted;
        throw JobFailedException(std::string(vocabulary::tablebases_not_loaded));
    }
    [[nodiscard]] std::string_view name() const override { return word_; }

  private:
    const std::string_view word_;
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
        for (const std::string_view bitbase : verified_bitbases) {
            if (word == bitbase || word == vocabulary::all)
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
    for (const std::string_view word : verified_bitbases) vlog << word << '\n';
}

}  // namespace VorkaInterfaces
