#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "bitbases/bitbases.h"
#include "bitbases/tablebases.h"
#include "chess/board.h"
#include "frame/base/vorka_exception.h"

/// Copies bitbases out of tablebases, position by position, and compares loaded bitbases with them.
namespace VorkaGenerator {

class GenerationFailed : public TextException {
  public:
    using TextException::TextException;
};
class VerificationFailed : public TextException {
  public:
    using TextException::TextException;
};

/// Write one file, and its checksum beside it. Throw GenerationFailed: nothing is written if the tablebases lack the
/// material, and what was written so far stays if they fail later.
void GenerateTwoPawnsBitbases(const VorkaTablebases::Tablebases& tablebases, const std::string& path);
void GenerateRammedPawnBitbases(const VorkaTablebases::Tablebases& tablebases, const std::string& path);

/// Is told what a verification finds, while it runs.
class VerificationHandler {
  public:
    VerificationHandler() = default;
    virtual ~VerificationHandler() = default;
    VerificationHandler(const VerificationHandler&) = delete;
    VerificationHandler& operator=(const VerificationHandler&) = delete;

    virtual void started(std::string_view name) = 0;
    virtual void finished() = 0;
    virtual void positionChecked() = 0;
    virtual void wrongResult(const BOARD& board) = 0;
    virtual void positionNotFound(const BOARD& board) = 0;
};

/// Says nothing, but prints the first position that is wrong and throws VerificationFailed.
class SilentVerificationHandler : public VerificationHandler {
  public:
    void started(std::string_view) override {}
    void finished() override {}
    void positionChecked() override {}
    void wrongResult(const BOARD& board) override;
    void positionNotFound(const BOARD& board) override;
};

/// Writes what is verified, each wrong position, and how it went.
class DefaultVerificationHandler : public VerificationHandler {
  public:
    void started(std::string_view name) override;
    void finished() override;
    void positionChecked() override { ++positions_; }
    void wrongResult(const BOARD& board) override;
    void positionNotFound(const BOARD& board) override;
    virtual void aborted();

  private:
    void report(std::string_view text, const BOARD& board);
    std::string name_;
    std::int64_t positions_ = 0;
    bool has_failed_ = false;
};

/// The bitbases to be verified, and the tables that know better.
struct Databases {
    const VorkaBitbases::Bitbases& bitbases;
    const VorkaTablebases::Tablebases& tablebases;
};

/// Walk all positions of one class and compare their results by sign. A bitbase that is not loaded has no positions.
/// Throw VerificationFailed when the tablebases give no answer.
void VerifySinglePawnBitbases(const Databases& databases, VerificationHandler& handler);
void VerifyTwoPawnsBitbases(const Databases& databases, VerificationHandler& handler);
void VerifyRammedPawnBitbases(const Databases& databases, VerificationHandler& handler);

}  // namespace VorkaGenerator
