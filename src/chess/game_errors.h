#pragma once

#include "frame/base/vorka_exception.h"

/// What the readers of positions and games find wrong with a text. UserBoard, which tells the same of a game, gives
/// them its own names: UserBoard::io_error and so on. They carry no words of their own.
namespace game_errors {

class user_exception : public VorkaException {};
/// Such pieces, rights or squares can't stand on a board.
class invalid_position : public user_exception {};
/// The text is not of the format.
class io_error : public user_exception {};

}  // namespace game_errors
