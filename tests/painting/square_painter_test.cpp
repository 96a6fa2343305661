#include "painting/square_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace morva {
namespace {

/// The strokes in the order drawn, without the thin lines that make up solid bodies: kind, "!" where it is cut out in
/// the square's own colour, pen, and the points or centre and radius.
std::string Features(const PictureBox& square, Color c) {
  std::ostringstream text;
  for (const Stroke& s : square.Strokes()) {
    const bool circle = s.kind == Stroke::Kind::kCircle;
    if (!circle && s.draw_width == 1 && s.color == c) continue;
    EXPECT_TRUE(s.color == c || s.color == square.BackColor());
    EXPECT_TRUE(!circle || s.fill == square.FillColor);
    text << (circle ? "C" : "L") << (s.color == c ? "" : "!") << s.draw_width << ' ' << s.x1 << ' ' << s.y1 << ' '
         << s.x2;
    if (!circle) text << ' ' << s.y2;
    text << ", ";
  }
  return text.str();
}

/// The thin lines in the colour c, in order of place.
std::vector<Stroke> Body(const PictureBox& square, Color c) {
  std::vector<Stroke> body;
  for (const Stroke& s : square.Strokes()) {
    if (s.kind == Stroke::Kind::kLine && s.draw_width == 1 && s.color == c) body.push_back(s);
  }
  std::sort(body.begin(), body.end());
  return body;
}

TEST(SquarePainter, SquaresStartEmptyInTwoColours) {
  SquarePainter board{FormStyle{}};
  for (const int light : {0, 2, 9, 63}) {
    EXPECT_TRUE(board.squ(light).BackColor() == kLightSquare && board.squ(light).ForeColor == kBlack) << light;
  }
  for (const int dark : {1, 8, 56, 62}) {
    EXPECT_TRUE(board.squ(dark).BackColor() == kDarkSquare && board.squ(dark).ForeColor == kWhite) << dark;
  }
  for (const PictureBox& square : board.squ) {
    EXPECT_EQ(square.Tag, "0");
    EXPECT_TRUE(square.AutomaticDrag && square.FillSolid && square.Strokes().empty());
  }
}

TEST(SquarePainter, EachPieceWritesTheWholeRecordAndShowsItsFeatures) {
  const std::string features[] = {
      "",
      "C1 390 220 80, L3 180 630 585 630, ",
      "L15 390 280 390 540, L4 275 150 275 280, L4 375 150 375 280, L4 390 150 390 280, L4 490 150 490 280, ",
      "C1 405 250 115, L!1 405 0 405 250, ",
      "C1 465 250 115, L7 465 250 225 345, L7 440 200 225 345, L7 465 265 225 345, L!1 260 330 150 375, ",
      "C1 405 250 80, L5 305 245 505 245, L5 405 150 405 280, ",
      "C1 405 250 80, L3 405 150 405 280, L3 505 150 405 280, L3 305 150 405 280, ",
      "C1 390 390 330, ",
      "C1 390 390 330, C!3 390 390 230, "};
  SquarePainter board{FormStyle{}};
  for (const int i : {10, 11}) {  // one light, one dark
    PictureBox& square = board.squ(i);
    for (int code = 1; code <= 8; ++code) {
      for (const Color c : {kWhite, kBlack}) {
        board.queen(i, c == kWhite ? 0 : 1);  // leaves nothing behind
        square.Tag = std::to_string(code);
        board.drawmove(i, c);
        EXPECT_EQ(Features(square, c), features[code]);
        EXPECT_EQ(square.Tag, std::to_string(code));
        EXPECT_TRUE(square.ForeColor == c && square.FillColor == c && square.DrawWidth == 1) << code;
      }
    }
  }
}

TEST(SquarePainter, BodiesAreSolidFromEndToEnd) {
  SquarePainter board{FormStyle{}};
  const PictureBox& square = board.squ(0);
  const struct {
    int code;
    std::size_t lines;
    float first[4], last[4];  // x1, y1, x2, y2
  } bodies[] = {{1, 18, {350, 300, 270, 630}, {425, 300, 495, 630}},
                {2, 151, {200, 550, 580, 550}, {200, 700, 580, 700}},
                {3, 300, {251, 700, 349.66667F, 280}, {550, 700, 449.33333F, 280}},
                {4, 300, {301, 700, 399.66667F, 280}, {600, 700, 499.33333F, 280}},
                {5, 300, {251, 700, 349.66667F, 280}, {550, 700, 449.33333F, 280}},
                {6, 300, {251, 700, 349.66667F, 280}, {550, 700, 449.33333F, 280}}};
  for (const auto& expected : bodies) {
    board.squ(0).Tag = std::to_string(expected.code);
    board.drawmove(0, kWhite);
    const std::vector<Stroke> body = Body(square, kWhite);
    ASSERT_EQ(body.size(), expected.lines) << expected.code;
    for (const auto& [drawn, ends] : {std::pair{body.front(), expected.first}, {body.back(), expected.last}}) {
      EXPECT_TRUE(drawn.x1 == ends[0] && drawn.y1 == ends[1] && drawn.y2 == ends[3]) << expected.code;
      EXPECT_FLOAT_EQ(drawn.x2, ends[2]) << expected.code;
    }
    for (std::size_t k = 1; k < body.size(); ++k) EXPECT_LE(body[k].x2 - body[k - 1].x2, 15) << expected.code;
  }
}

TEST(SquarePainter, DrawmoveFollowsTheTag) {
  SquarePainter board{FormStyle{}};
  PictureBox& square = board.squ(20);
  board.queen(20, 1);
  const auto queen = square.Strokes();
  for (const std::string bad : {"9", "155", "-1", "-100"}) {
    square.Tag = bad;
    board.drawmove(20, kBlack);
    EXPECT_EQ(square.Strokes(), queen) << bad;
    EXPECT_TRUE(square.ForeColor == kWhite && square.Tag == bad) << bad;
  }
  square.Tag = "0";
  board.drawmove(20, kBlack);
  EXPECT_TRUE(square.Strokes().empty());
  EXPECT_EQ(square.ForeColor, kWhite);
  for (const auto& [asked, painted] : {std::pair{8388607U, kBlack}, {8388608U, kWhite}, {4294967295U, kWhite}}) {
    square.Tag = "7";
    board.drawmove(20, asked);
    EXPECT_EQ(square.ForeColor, painted) << asked;
  }
}

TEST(SquarePainter, HoverMarksAndLeavesNoTrace) {
  SquarePainter board{FormStyle{}};
  PictureBox& square = board.squ(27);
  for (const Color c : {kWhite, kBlack}) {
    square.Cls();
    board.hover(27, c);
    EXPECT_EQ(Features(square, c),
              "L40 390 0 390 840, L!14 0 0 780 780, L!14 0 780 780 0, L!14 0 0 0 780, L!14 0 0 780 0, "
              "L!14 0 780 780 780, L!14 780 0 780 780, C4 390 390 30, ");
    EXPECT_EQ(square.Tag, "0");
    EXPECT_TRUE(square.ForeColor == kBlack && square.DrawWidth == 1);
  }
}

}  // namespace
}  // namespace morva
