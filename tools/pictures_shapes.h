// The outlines that the pictures are made of: pieces, letters and the hand.
#pragma once

#include <QPainterPath>

namespace morva::pictures {

// Pieces: thousandths of a board square, y upwards, the foot standing on y 0, x 0 the middle.
// Profiles of turned bodies are whole, both halves.
QPainterPath king_profile();
QPainterPath king_cross();
QPainterPath knight_foot();
QPainterPath knight_head();   // looks to the left
QPainterPath knight_lines();  // cuts in the head: open strokes
QPainterPath checker_profile();

// The name "Morva": x to the right, y downwards, the baseline at y 0, the capital 720 high.
QPainterPath morva_letters();

}  // namespace morva::pictures
