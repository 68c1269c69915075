#include "interfaces/commands/jobs.h"

#include <array>

#include "bitbases/bitbase_generator.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/base/wall_clock.h"

namespace VorkaInterfaces {

namespace {

// --- Generation ---

/// Writes one file beside the executable. A file that exists there is kept, whatever it contains.
class GenerateBitbasesJob : public AbstractJob {
  public:
    void run(Engine& engine) override {
        vlog << name() << vocabulary::job_dots;
        vlog.Flush();
        const std::string path = ExecutableDirectory() + '/' + std::string(file());
        if (FileExists(path)) {
            vlog << vocabulary::job_skipped_file_exists;
            return;
        }
        const Timestamp start = Timestamp::Now();
        try {
            generate(engine.tablebases, path);
        } catch (const VorkaGenerator::GenerationFailed& error) {
            vlog << vocabulary::job_failed;
            throw JobFailedException(error.text());
        }
        vlog << vocabulary::generation_done << ElapsedMilliseconds(start, Timestamp::Now()) / 1000
             << vocabulary::generation_seconds;
    }

  private:
    [[nodiscard]] virtual std::string_view file() const = 0;
    virtual void generate(const VorkaTablebases::Tablebases& tablebases, const std::string& path) const = 0;
};

class GenerateTwoPawnsBitbasesJob final : public GenerateBitbasesJob {
  public:
    [[nodiscard]] std::string_view name() const override { return vocabulary::generating_two_pawns; }

  private:
    [[nodiscard]] std::string_view file() const override { return vocabulary::two_pawns_file; }
    void generate(const VorkaTablebases::Tablebases& tablebases, const std::string& path) const override {
        VorkaGenerator::GenerateTwoPawnsBitbases(tablebases, path);
    }
};

class GenerateRammedPawnBitbasesJob final : public GenerateBitbasesJob {
  public:
    [[nodiscard]] std::string_view name() const override { return vocabulary::generating_rammed_pawn; }

  private:
    [[nodiscard]] std::string_view file() const override { return vocabulary::rammed_pawn_file; }
    void generate(const VorkaTablebases::Tablebases& tablebases, const std::string& path) const override {
        VorkaGenerator::GenerateRammedPawnBitbases(tablebases, path);
    }
};

// --- Verification ---

/// Compares one bitbase with the tablebases. One that is not loaded is skipped.
class VerifyBitbasesJob : public AbstractJob {
  public:
    void run(Engine& engine) override {
        try {
            verify({.bitbases = engine.bitbases, .tablebases = engine.tablebases}, *handler_);
        } catch (const VorkaGenerator::VerificationFailed& error) {
            handler_->aborted();
            throw JobFailedException(error.text());
        }
    }

  private:
    virtual void verify(const VorkaGenerator::Databases& databases,
                        VorkaGenerator::VerificationHandler& handler) const = 0;
    const std::unique_ptr<VorkaGenerator::DefaultVerificationHandler> handler_ =
        std::make_unique<VorkaGenerator::DefaultVerificationHandler>();
};

class VerifySinglePawnBitbasesJob final : public VerifyBitbasesJob {
  public:
    [[nodiscard]] std::string_view name() const override { return vocabulary::job_single_pawn; }

  private:
    void verify(const VorkaGenerator::Databases& databases,
                VorkaGenerator::VerificationHandler& handler) const override {
        VorkaGenerator::VerifySinglePawnBitbases(databases, handler);
    }
};

class VerifyTwoPawnsBitbasesJob final : public VerifyBitbasesJob {
  public:
    [[nodiscard]] std::string_view name() const override { return vocabulary::job_two_pawns; }

  private:
    void verify(const VorkaGenerator::Databases& databases,
                VorkaGenerator::VerificationHandler& handler) const override {
        VorkaGenerator::VerifyTwoPawnsBitbases(databases, handler);
    }
};

class VerifyRammedPawnBitbasesJob final : public VerifyBitbasesJob {
  public:
    [[nodiscard]] std::string_view name() const override { return vocabulary::job_rammed_pawn; }

  private:
    void verify(const VorkaGenerator::Databases& databases,
                VorkaGenerator::VerificationHandler& handler) const override {
        VorkaGenerator::VerifyRammedPawnBitbases(databases, handler);
    }
};

// --- Words ---

struct JobWord {
    std::string_view word;
    std::unique_ptr<AbstractJob> (*make)();
};
template <class Job>
std::unique_ptr<AbstractJob> Make() {
    return std::make_unique<Job>();
}

constexpr std::array generation_words{
    JobWord{vocabulary::job_two_pawns, Make<GenerateTwoPawnsBitbasesJob>},
    JobWord{vocabulary::job_rammed_pawn, Make<GenerateRammedPawnBitbasesJob>},
};
constexpr std::array verification_words{
    JobWord{vocabulary::job_single_pawn, Make<VerifySinglePawnBitbasesJob>},
    JobWord{vocabulary::job_two_pawns, Make<VerifyTwoPawnsBitbasesJob>},
    JobWord{vocabulary::job_rammed_pawn, Make<VerifyRammedPawnBitbasesJob>},
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

/// Adds the jobs that a word names. False if there are none.
template <class Words>
bool AddJobs(JobList& jobs, const Words& words, const std::string& word) {
    const std::size_t before = jobs.size();
    for (const JobWord& row : words) {
        if (word == row.word || word == vocabulary::all) jobs.push_back(row.make());
    }
    return jobs.size() != before;
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
        if (!AddJobs(jobs, generation_words, word)) RefuseWord(vocabulary::could_not_parse_generation_job, word);
    }
    return jobs;
}

JobList verificationJobs(const std::string& words) {
    JobList jobs;
    for (const std::string& word : SplitIntoWords(words)) {
        if (word == vocabulary::job_generic) {
            throw AbstractJob::JobFailedException(std::string(vocabulary::generic_verification_not_supported));
        }
        if (!AddJobs(jobs, verification_words, word)) RefuseWord(vocabulary::could_not_parse_verify_job, word);
    }
    return jobs;
}

void listGenerationJobs() {
    vlog << vocabulary::available_generation_jobs;
    for (const JobWord& row : generation_words) vlog << row.word << '\n';
}

void listVerificationJobs() {
    vlog << vocabulary::available_verification_jobs;
    for (const JobWord& row : verification_words) vlog << row.word << '\n';
}

}  // namespace VorkaInterfaces
