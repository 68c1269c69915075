#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "chess/user_board.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/jobs.h"

/// Commands of the endgame databases, and the developer's tool that looks for the best square of a piece.
namespace VorkaInterfaces {

/// `tb`
class Command_DisplayTablebasesStatus : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `tb type size path`
class Command_InitTablebases : public CheckedCommand {
  public:
    Command_InitTablebases(std::string input_line, std::string type, std::string size, std::string path)
        : CheckedCommand(std::move(input_line)),
          type_(std::move(type)),
          size_(std::move(size)),
          path_(std::move(path)) {}

    /// Takes the tables of one format into use, opened by the engine's opener.
    class Initializer {
      public:
        Initializer() = default;
        virtual ~Initializer() = default;
        Initializer(const Initializer&) = delete;
        Initializer& operator=(const Initializer&) = delete;
        /// `size` is that of the cache, in bytes. Throws TB_Exception with the reason.
        virtual void initialize(Engine& engine, std::uint64_t size, const std::string& path) = 0;
    };
    class NalimovInitializer : public Initializer {
      public:
        void initialize(Engine& engine, std::uint64_t size, const std::string& path) override;
    };

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::string type_;
    const std::string size_;
    const std::string path_;
    std::uint64_t bytes_ = 0;
};

/// `probe fen`: what the databases know of a position that is not the game's.
class Command_Probe : public CheckedCommand {
  public:
    /// Throws ErrorCommand for a text that is no position.
    Command_Probe(std::string input_line, const std::string& fen);

  private:
    void work(ConnectedGame& game) override;
    UserBoard position_;
};

/// `generate [jobs]`
class Command_Generate : public CheckedCommand {
  public:
    Command_Generate(std::string input_line, std::string jobs)
        : CheckedCommand(std::move(input_line)), jobs_(std::move(jobs)) {}

  private:
    void work(ConnectedGame& game) override;
    const std::string jobs_;
};

/// `verify [jobs]`
class Command_Verify : public CheckedCommand {
  public:
    Command_Verify(std::string input_line, std::string jobs)
        : CheckedCommand(std::move(input_line)), jobs_(std::move(jobs)) {}

  private:
    void work(ConnectedGame& game) override;
    const std::string jobs_;
};

/// `optimize_piece`: asks for a square at standard input.
class Command_OptimizePiece : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

}  // namespace VorkaInterfaces
