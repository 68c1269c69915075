#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "chess/user_board.h"
#include "frame/game/game_protocol.h"
#include "interfaces/protocols/help_texts.h"
#include "search/driver/search_host.h"
#include "search/driver/steering.h"

struct HashTables;

namespace VorkaInterfaces {

/// Everything that the engine says goes through one object of this class: what the game says, what the search reports
/// and what commands answer. Each operation is named after its meaning; no caller asks which protocol is in force.
/// Output goes through the log stream; operations that write leave the echo of that stream as they found it, and end
/// with a flush.
class BasicProtocol : public GameProtocol {
  public:
    explicit BasicProtocol(bool initial_post) : post(initial_post) {}
    BasicProtocol(const BasicProtocol&) = delete;
    BasicProtocol& operator=(const BasicProtocol&) = delete;

    bool post;                     ///< whether thinking output goes to standard output
    std::int16_t personality = 0;  ///< the current personality
    std::string id;                ///< added to the engine's name, or replacing it if it begins with "##"

    [[nodiscard]] static std::string_view nameOfSearchKind(SearchKind kind);

    virtual void copyStateFrom(const BasicProtocol& other);
    /// Whether `analyze` is allowed after the end of a game.
    [[nodiscard]] virtual bool analyzesFinishedGames() const = 0;
    /// Called as soon as the protocol is in force.
    virtual void start(const std::string& opponent_name) = 0;
    virtual void sendHint(const std::string& move) = 0;  ///< empty: no move exists
    virtual void sendPredictedMoveMade(const std::string& move) = 0;
    virtual void sendCommandIgnored(std::string_view reason) = 0;
    virtual void sendEditModeAborted() = 0;
    virtual void sendError(std::string_view text);
    virtual void sendPrompt(const UserBoard& game) = 0;
    virtual void sendEmptyLineReply() = 0;
    virtual void sendSearchStatus(const SearchInfo* info) = 0;  ///< none: no search runs
    virtual void sendThinking(const SearchInfo& info);
    virtual void sendDepthStarted(int depth);
    virtual void sendNewPvMove(const std::string& move) = 0;
    virtual void sendSearchInstability() = 0;
    virtual void sendSearchStatistics(const SearchInfo& info) = 0;
    void sendDrawRejected(bool opponent_is_computer) override;
    virtual void sendDrawOfferDeferred(bool opponent_is_computer);
    /// A list of commands: all of them, or those that may stand on the command line.
    virtual void showHelp(const std::vector<VorkaHelpScreen::HelpText>& commands);
    virtual void showEditHelp();
    virtual void showVersion();
    virtual void showBoard(const UserBoard& game, bool with_state);
    virtual void showPersonality();
    virtual void showHashtableStatus(const HashTables& tables, bool details);
    virtual void onEditBoardChanged(EditBoard& board) = 0;
    virtual void onGameLoaded(const UserBoard& game) = 0;
    virtual void tellUser(const std::string& text) = 0;
    [[nodiscard]] virtual std::string getMyName() const;
    [[nodiscard]] virtual std::string getShortName() const;
    virtual void sendEditPrompt() = 0;
    virtual void writeThinkingLine(const SearchInfo& info) = 0;
    virtual void writeDepthLine(int depth) = 0;

  protected:
    // What all protocols say in the same way. The echo of the log stream decides where the texts go; no flush.

    /// The line that answers "." while a search runs.
    static void writeSearchStatus(const SearchInfo& info);
    /// Time, hash tables and enhanced transposition cutoffs of a search that has ended.
    static void writeSearchStatistics(const SearchInfo& info);
    /// The moves from the start of the game, those taken back included, in lines of numbered moves.
    static void writeMoveList(const UserBoard& game);

  private:
    /// Whether `id` stands in for the engine's name altogether.
    [[nodiscard]] bool idReplacesName() const;
};

}  // namespace VorkaInterfaces
