#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/vorka_exception.h"
#include "search/engine/engine.h"

/// The generation and verification of bitbases, as jobs that `generate` and `verify` name by words.
namespace VorkaInterfaces {

class AbstractJob {
  public:
    /// A job that failed or does not exist; the text says why.
    class JobFailedException : public TextException {
      public:
        using TextException::TextException;
    };

    AbstractJob() = default;
    virtual ~AbstractJob() = default;
    AbstractJob(const AbstractJob&) = delete;
    AbstractJob& operator=(const AbstractJob&) = delete;

    /// Throws JobFailedException.
    virtual void run(Engine& engine) = 0;
    [[nodiscard]] virtual std::string_view name() const = 0;
};

using JobList = std::vector<std::unique_ptr<AbstractJob>>;

/// The jobs that words name, "all" meaning every one. Throw JobFailedException for a word that names none.
[[nodiscard]] JobList generationJobs(const std::string& words);
[[nodiscard]] JobList verificationJobs(const std::string& words);

/// Print the words that name jobs.
void listGenerationJobs();
void listVerificationJobs();

}  // namespace VorkaInterfaces
