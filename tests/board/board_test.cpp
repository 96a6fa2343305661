#include "board/board.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace morva {
namespace {

/// A board that keeps its history lines, at which "Ann" sits with "Bob".
struct TestBoard : Board {
  TestBoard() : Board(FormStyle{}) {
    Nick = who = "Ann";
    OpNick = "Bob";
  }
  void AddHistoryLine(const std::string& text, std::int32_t /*data*/) override { history.push_back(text); }
  void Read(int i, char letter) { ReadLetter(i, static_cast<unsigned char>(letter)); }
  char Letter(int i) const { return BoardLine()[static_cast<std::size_t>(i)]; }
  bool Bare(int i) const { return squ(i).Tag == "0" && squ(i).Strokes().empty(); }

  std::vector<std::string> history;
};

TEST(Pieces, HaveWordsNumbersAndLetters) {
  for (const auto& [i, name] : {std::pair{0, "A1"}, {7, "H1"}, {8, "A2"}, {36, "E5"}, {63, "H8"}}) {
    EXPECT_EQ(SquareName(i), name);
  }
  TestBoard board;
  const char* words[] = {"", "pawn", "castle", "bishop", "knight", "king", "queen", "checker", "king checker"};
  for (int code = 1; code <= 8; ++code) {
    for (const auto& [color, number] : {std::pair<std::string, int>{"black ", code}, {"white ", code + 10}}) {
      board.Read(1, static_cast<char>(100 + number));
      board.SetOldPiece(1);
      EXPECT_EQ(board.OldPiece, number);
      EXPECT_EQ(board.PieceColorName(1), color + words[code]);
      EXPECT_EQ(board.OldPieceColorName(), color + words[code]);
      EXPECT_EQ(board.Letter(1), 100 + number);
    }
  }
  for (const char nothing : {'d', 'n'}) {
    board.Read(1, nothing);
    board.SetOldPiece(1);
    EXPECT_TRUE(board.Bare(1) && board.OldPiece == 0 && board.OldPieceColorName() == "nothing");
    EXPECT_EQ(board.PieceColorName(1), "white ");  // the colour stays
    EXPECT_EQ(board.Letter(1), 'n');
  }
}

TEST(BoardLine, TakesBadLettersAndNeverWritesThem) {
  const std::string known = "defghijklnopqrstuv";
  for (int byte = 0; byte < 256; ++byte) {
    const char letter = static_cast<char>(byte);
    if (known.find(letter) != known.npos) continue;
    TestBoard board;
    board.king(4, 0);
    const auto king = board.squ(4).Strokes();
    board.Read(4, letter);
    EXPECT_TRUE(board.squ(4).Strokes() == king && board.squ(4).Tag != "0" && board.PieceName(4).empty()) << byte;
    EXPECT_EQ(board.Letter(4), letter == 'm' || letter == 'w' ? 'm' : 'd') << byte;
  }
}

TEST(Setups, LeaveNoPieceOfTheOldGame) {
  TestBoard board;
  const std::tuple<void (Board::*)(), const char*> setups[] = {
      {&Board::PaintChess, "fhgjighfeeeeeeeedndndndnndndndnddndndndnndndndndooooooooprqtsqrp"},
      {&Board::SetUpCheckers, "dkdkdkdkkdkdkdkddkdkdkdkndndndnddndndndnududududnunununuunununun"},
      // The squares of the third row keep the colour of the black checkers, those of the sixth that of the white ones.
      {&Board::SetUpChess, "fhgjighfeeeeeeeeddddddddndndndnddndndndnndndndndooooooooprqtsqrp"},
      {&Board::ClearBoard, "dddddddddddddddddddddddddddddddddddddddddddddddddddddddddddddddd"}};
  for (const auto& [set_up, line] : setups) {
    (board.*set_up)();
    EXPECT_EQ(board.BoardLine(), line);
    for (int i = 0; i < 64; ++i) EXPECT_EQ(board.squ(i).Strokes().empty(), board.squ(i).Tag == "0") << i;
    board.hover(20, kWhite);
  }
}

TEST(DoMove, ConvertsOnTheFarRowAndNowhereElse) {
  const struct {
    char piece;
    int from, too;
    char after;
  } moves[] = {{'o', 1, 7, 't'},  {'e', 48, 56, 'j'}, {'u', 14, 7, 'v'}, {'k', 49, 56, 'l'},
               {'o', 17, 8, 'o'}, {'e', 46, 55, 'e'}, {'u', 17, 8, 'u'}, {'k', 46, 55, 'k'},  // one row short
               {'e', 8, 0, 'e'},  {'o', 55, 63, 'o'}, {'k', 9, 0, 'k'},  {'u', 54, 63, 'u'},  // the own side's row
               {'t', 8, 0, 't'},  {'l', 54, 63, 'l'}, {'p', 56, 0, 'p'}};
  for (const auto& move : moves) {
    SCOPED_TRACE(std::string(1, move.piece) + " to " + SquareName(move.too));
    TestBoard board;
    board.Read(move.from, move.piece);
    const std::string piece = board.PieceColorName(move.from);
    const Color color = board.squ(move.from).ForeColor;
    board.DoMove(move.from, move.too);
    EXPECT_EQ(board.Letter(move.too), move.after);
    EXPECT_TRUE(board.Bare(move.from) && board.squ(move.from).ForeColor == color);
    const std::string line = "Ann: " + SquareName(move.from) + " - " + SquareName(move.too) + " (" + piece + ")";
    EXPECT_EQ(board.history, std::vector{line}) << "the piece as it moved";
    const auto picture = board.squ(move.too).Strokes();
    board.drawmove(move.too, color);
    EXPECT_EQ(board.squ(move.too).Strokes(), picture);
  }
}

}  // namespace
}  // namespace morva
