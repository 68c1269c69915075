#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "frame/game/game_control.h"
#include "interfaces/protocols/basic_protocol.h"

namespace VorkaInterfaces {

/// The game with the protocol in force: what the shell owns and the commands work on.
class ConnectedGame : public GameControl {
  public:
    ConnectedGame(Engine& engine, std::unique_ptr<BasicProtocol> first_protocol)
        : GameControl(engine, *first_protocol), protocol_(std::move(first_protocol)) {}

    [[nodiscard]] BasicProtocol& protocol() const { return *protocol_; }
    /// Puts another protocol in force; it takes over the state of the old one and starts.
    void installProtocol(std::unique_ptr<BasicProtocol> protocol) {
        protocol->copyStateFrom(*protocol_);
        speakThrough(*protocol);
        protocol_ = std::move(protocol);
        protocol_->start(playerDefaults().opponentName);
    }
    /// The search plays in the style of this personality, and the protocol tells it.
    void setPersonality(std::int16_t value) {
        setSearchPersonality(value);
        protocol_->personality = value;
    }

  private:
    std::unique_ptr<BasicProtocol> protocol_;
};

}  // namespace VorkaInterfaces
