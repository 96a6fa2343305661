#pragma once

#include <QPixmap>
#include <string>
#include <vector>

#include "platform/drawing/surface.h"

namespace morva {

/// The picture that strokes make on a background: width by height pixels, at a scale of the screen.
/// Equal strokes share one picture.
QPixmap PictureOf(const std::vector<Stroke>& strokes, Color background, int width, int height, double scale);

/// Device pixels of the finest screen for one pixel of the layout.
double ScreenScale();

/// The stored picture of that name, the finer one of two, with a pixel ratio of 2, for a scale above 1; empty where
/// there is none.
QPixmap StoredPicture(const std::string& name, double scale = ScreenScale());

}  // namespace morva
