#include <optional>
#include <string>
#include <string_view>

#include "net/canned_words.h"
#include "net/game_window.h"
#include "net/text.h"
#include "net/wire.h"
#include "platform/accessibility/announce.h"

namespace morva {

namespace {

// The square that a text names by the number it starts with; none where there is no number, or none of a square.
std::optional<int> SquareIn(const std::string& text) {
  const std::optional<int> index = LeadingNumber(text);
  return index && *index >= 0 && *index < kSquares ? index : std::nullopt;
}

}  // namespace

void GameWindow::Dispatch(const std::string& message) {
  if (message == "me") {
    highlight("you");
  } else if (message == "you") {
    highlight("me");
  } else {
    Receive(message.substr(1), Val(message.substr(0, 1)));
  }
}

void GameWindow::Receive(const std::string& Data, int dtype) {
  switch (dtype) {
    case kWords:
      return ReceiveWord(Data);
    case kBoard:
      return ReceiveBoardAction(Data);
    case kNick:
      return ReceiveNick(Data);
    case kTrash:
      return ReceiveTrash(Data);
    case kChange:
      return ReceiveChange(Data);
    default:
      return;
  }
}

void GameWindow::ReceiveWord(const std::string& Data) {
  for (const CannedWord& canned : kCannedWords) {
    if (Data != canned.word) continue;
    PlayResourceSound(canned.sound_there);
    if (!AcceptsMessages()) return;
    AskForAttention();
    return ShowMessage(canned.TextFrom(Shortened(OpNick)));
  }
  PlayResourceSound(kLineSound);
  const std::string said = TextOf(Data);
  out("<" + OpNick + ">  " + said);
  Announce(OpNick + ": " + said);
  AskForAttention();
}

void GameWindow::ReceiveBoardAction(const std::string& Data) {
  const std::string_view mark = kBoardHead.substr(1);
  who = OpNick;
  if (Data.starts_with(mark)) {
    ReceiveBoard(Data.substr(mark.size()));
  } else if (Data == "newc") {
    NewCheckers();
  } else if (Data == "clear") {
    PlayResourceSound(kBoardSound);
    ClearBoard();
    Announce(who + ": board cleared");
  } else if (Data == "new") {
    NewChess();
  } else {
    ReceiveMove(Data);
  }
}

void GameWindow::ReceiveBoard(const std::string& letters) {
  if (letters.size() < kSquares) return;
  for (int i = 0; i < kSquares; ++i) {
    ReadLetter(i, static_cast<unsigned char>(letters[static_cast<std::size_t>(i)]));
  }
  Announce("New board from " + OpNick);
  PlayResourceSound(kBoardSound);
}

void GameWindow::ReceiveMove(const std::string& Data) {
  if (Data.size() < 4) return;
  const auto from = SquareIn(Data.substr(0, 2));
  const auto too = SquareIn(Data.substr(Data.size() - 2));
  if (!from || !too) return;
  PlayResourceSound(kMoveSound);
  who = OpNick;
  DoMove(*from, *too);
  highlight("me");
  AskForAttention();
}

void GameWindow::ReceiveNick(const std::string& Data) {
  OpNick = TextOf(Data);
  ShowNicks();
}

void GameWindow::ReceiveTrash(const std::string& Data) {
  const auto index = SquareIn(Data);
  if (!index) return;
  SetOldPiece(*index);
  EmptySquare(*index);
  who = OpNick;
  TrashToHist(*index);
}

void GameWindow::ReceiveChange(const std::string& Data) {
  if (Data.size() < 4) return;
  const auto index = SquareIn(Data.substr(0, 2));
  const std::optional<int> color = LeadingNumber(Data.substr(3));
  if (!index || !color || (*color != static_cast<int>(kBlack) && *color != static_cast<int>(kWhite))) return;
  SetOldPiece(*index);
  PutPiece(*index, Val(Data.substr(2, 1)), static_cast<Color>(*color));
  who = OpNick;
  ChangeToHist(*index);
}

}  // namespace morva
