#include "board/board.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

namespace morva {
namespace {

using History = std::vector<std::pair<std::string, std::int32_t>>;

/// A board that keeps its history lines, at which "Ann" sits with "Bob".
struct TestBoard : Board {
  TestBoard() : Board(FormStyle{}) {
    Nick = who = "Ann";
    OpNick = "Bob";
  }
  void AddHistoryLine(const std::string& text, std::int32_t data) override { history.emplace_back(text, data); }
  void Read(int i, char letter) { ReadLetter(i, static_cast<unsigned char>(letter)); }
  char Letter(int i) const { return BoardLine()[static_cast<std::size_t>(i)]; }
  bool Bare(int i) const { return squ(i).Tag == "0" && squ(i).Strokes().empty(); }

  History history;
};

const std::string kStartLine = "fhgjighfeeeeeeeedndndndnndndndnddndndndnndndndndooooooooprqtsqrp";

TEST(Words, NameSquaresAndPieces) {
  for (const auto& [i, name] : {std::pair{0, "A1"}, {7, "H1"}, {8, "A2"}, {36, "E5"}, {52, "E7"}, {63, "H8"}}) {
    EXPECT_EQ(SquareName(i), name);
  }
  TestBoard board;
  const char* words[] = {"", "pawn", "castle", "bishop", "knight", "king", "queen", "checker", "king checker"};
  for (int code = 0; code <= 8; ++code) {
    board.Read(0, static_cast<char>(100 + code));
    EXPECT_EQ(board.PieceColorName(0), std::string("black ") + words[code]);
    board.Read(1, static_cast<char>(110 + code));
    EXPECT_EQ(board.PieceColorName(1), std::string("white ") + words[code]);
  }
  for (const char bad : {'\0', 'c', 'm', '\xFF'}) {
    board.Read(0, bad);
    EXPECT_EQ(board.PieceName(0), "") << bad;
  }
}

TEST(Words, NamePieceAndColourInOneNumber) {
  TestBoard board;
  const std::tuple<char, int, const char*> cases[] = {
      {'n', 0, "nothing"},     {'d', 0, "nothing"},      {'g', 3, "black bishop"},       {'l', 8, "black king checker"},
      {'o', 11, "white pawn"}, {'t', 16, "white queen"}, {'v', 18, "white king checker"}};
  for (const auto& [letter, number, name] : cases) {
    board.Read(1, letter);
    board.SetOldPiece(1);
    EXPECT_EQ(board.OldPiece, number) << letter;
    EXPECT_EQ(board.OldPieceColorName(), name) << letter;
  }
}

TEST(BoardLine, IsWrittenAndRead) {
  TestBoard host, guest;
  host.PaintChess();
  EXPECT_EQ(host.BoardLine(), kStartLine);
  for (int i = 0; i < 64; ++i) guest.Read(i, host.Letter(i));
  EXPECT_EQ(guest.BoardLine(), kStartLine);
  for (int i = 0; i < 64; ++i) EXPECT_EQ(guest.squ(i).Strokes(), host.squ(i).Strokes()) << i;

  // Both letters for nothing clear the square, and neither tells a colour.
  guest.Read(0, 'n');
  guest.Read(63, 'd');
  EXPECT_EQ(guest.Letter(0), 'd');
  EXPECT_EQ(guest.Letter(63), 'n');
  EXPECT_TRUE(guest.Bare(0) && guest.Bare(63));
}

TEST(BoardLine, TakesBadLettersAndNeverWritesThem) {
  TestBoard board;
  board.PaintChess();
  const auto king = board.squ(4).Strokes();
  for (const auto& [letter, tag] : {std::pair{'m', "9"}, {'w', "9"}, {'x', "10"}, {'\0', "-100"}, {'\xFF', "145"}}) {
    board.Read(4, letter);
    EXPECT_EQ(board.squ(4).Tag, tag);
    EXPECT_EQ(board.squ(4).Strokes(), king) << tag;
    EXPECT_EQ(board.Letter(4), *tag == '9' ? 'm' : 'd') << tag;
  }
  for (int byte = 0; byte < 256; ++byte) {
    board.Read(byte % 64, static_cast<char>(byte));
    if (byte % 64 == 63) {
      const std::string line = board.BoardLine();
      EXPECT_EQ(line.size(), 64U);
      EXPECT_EQ(line.find_first_not_of("defghijklmnopqrstuvw"), std::string::npos) << line;
    }
  }
}

TEST(Setups, LeaveNoPieceOfTheOldGame) {
  TestBoard board;
  board.SetUpCheckers();
  EXPECT_EQ(board.BoardLine(), "dkdkdkdkkdkdkdkddkdkdkdkndndndnddndndndnududududdudududuudududud");
  board.SetUpChess();
  board.hover(20, kWhite);
  // The squares of the third row keep the colour of the black checkers, those of the sixth that of the white ones.
  EXPECT_EQ(board.BoardLine(), "fhgjighfeeeeeeeeddddddddndndndnddndndndnndndndndooooooooprqtsqrp");
  board.SetUpCheckers();
  EXPECT_EQ(board.BoardLine(), "dkdkdkdkkdkdkdkddkdkdkdkndndndnddndndndnududududnunununuunununun");
  for (int i = 0; i < 64; ++i) EXPECT_EQ(board.squ(i).Strokes().size(), board.squ(i).Tag == "7" ? 1U : 0U) << i;

  board.ClearBoard();
  EXPECT_EQ(board.BoardLine(), std::string(64, 'd'));
  for (int i = 0; i < 64; ++i) EXPECT_TRUE(board.Bare(i)) << i;
  board.hour = board.min = board.sec = 5;
  board.ResetClock();
  EXPECT_EQ(board.hour + board.min + board.sec, 0);
}

TEST(DoMove, ConvertsOnTheFarRowAndNowhereElse) {
  const struct {
    char piece;
    int from, too;
    char after;
  } moves[] = {
      {'o', 8, 0, 't'},   {'o', 15, 7, 't'},  {'o', 1, 2, 't'},                       // white pawns to the top row
      {'e', 48, 56, 'j'}, {'e', 55, 63, 'j'},                                         // black pawns to the bottom row
      {'u', 14, 7, 'v'},  {'k', 49, 56, 'l'},                                         // checkers
      {'o', 17, 8, 'o'},  {'e', 46, 55, 'e'}, {'u', 17, 8, 'u'}, {'k', 46, 55, 'k'},  // one row short
      {'e', 8, 0, 'e'},   {'o', 55, 63, 'o'}, {'k', 9, 0, 'k'},  {'u', 54, 63, 'u'},  // the row of one's own side
      {'t', 8, 0, 't'},   {'v', 9, 0, 'v'},   {'p', 56, 0, 'p'}, {'r', 17, 2, 'r'},  {'i', 55, 56, 'i'},
  };
  for (const auto& move : moves) {
    SCOPED_TRACE(std::string(1, move.piece) + " to " + SquareName(move.too));
    TestBoard board;
    board.Read(move.from, move.piece);
    const std::string piece = board.PieceColorName(move.from);
    const Color color = board.squ(move.from).ForeColor;
    board.DoMove(move.from, move.too);
    EXPECT_EQ(board.Letter(move.too), move.after);
    EXPECT_TRUE(board.Bare(move.from) && board.squ(move.from).ForeColor == color);
    EXPECT_TRUE(board.i1 == move.from && board.i2 == move.too);
    // One line, which names the piece as it moved.
    ASSERT_EQ(board.history.size(), 1U);
    EXPECT_EQ(board.history[0].first,
              "Ann: " + SquareName(move.from) + " - " + SquareName(move.too) + " (" + piece + ")");
    const auto picture = board.squ(move.too).Strokes();
    board.drawmove(move.too, color);
    EXPECT_EQ(board.squ(move.too).Strokes(), picture);
  }
}

TEST(DoMove, OfNothingEmptiesAndTellsNothing) {
  for (const int too : {0, 20, 60}) {  // onto itself, an empty square, a piece that another board doesn't have
    TestBoard board;
    board.king(60, 1);
    board.hover(0, kWhite);
    board.hover(20, kWhite);
    board.DoMove(0, too);
    EXPECT_TRUE(board.Bare(0) && board.Bare(too));
    EXPECT_EQ(board.i2, too);
    EXPECT_TRUE(board.history.empty());
  }
}

TEST(History, TellsWhoDidWhatToWhichPiece) {
  TestBoard board;
  board.Pawn(52, 1);
  board.DoMove(52, 36);

  board.who = "Bob";
  board.bishop(18, 0);
  board.SetOldPiece(18);
  board.queen(18, 0);
  board.ChangeToHist(18);

  board.who = "Ann";
  board.knight(27, 1);
  board.OldPiece = 0;
  board.ChangeToHist(27);

  board.knight(41, 1);
  board.SetOldPiece(41);
  board.squ(41).Tag = "0";
  board.TrashToHist(41);

  board.who = "Bob";
  board.checkerking(7, 0);
  board.SetOldPiece(7);
  board.TrashToHist(7);
  board.castle(3, 1);
  board.DoMove(3, 9);

  EXPECT_EQ(board.history, (History{{"Ann: E7 - E5 (white pawn)", 1523611},
                                    {"Bob: C3 (black bishop to black queen)", 2031826},
                                    {"Ann: D4 (nothing to white knight)", 2002714},
                                    {"Ann: trashed B6 (white knight)", 3004114},
                                    {"Bob: trashed H1 (black king checker)", 3000728},
                                    {"Bob: D1 - B2 (white castle)", 1030932}}));
}

}  // namespace
}  // namespace morva
