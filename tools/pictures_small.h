// What is drawn for its size, pixel by pixel or nearly so: the small icons and the mouse pointer.
#pragma once

#include <QImage>

namespace morva::pictures {

// The icon at 16, 24 or 32 pixels: a knight on a square of the board, on a transparent ground.
QImage small_icon(int size);

// The mouse pointer at scale 1 (32 pixels) or 2 (64): a white hand with a cyan cuff pointing upwards. The index
// fingertip is at x 20, y 0 times the scale.
QImage hand(int scale);

}  // namespace morva::pictures
