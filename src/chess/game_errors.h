#pragma once

#include "frame/base/vorka_exception.h"

/// What the readers of positions and games find wrong with a text. UserBoard throws them too, under its own names:
/// UserBoard::io_error and so on. They carry no text.
namespace game_errors {

class user_exception : public VorkaException {};
/// Such pieces, rights or squares can't stand on a board.
class invalid_position : public user_exception {};
/// The text is not of the format.
class io_error : public user_exception {};

}  // namespace game_errors
