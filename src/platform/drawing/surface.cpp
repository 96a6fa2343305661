#include "platform/drawing/surface.h"

#include <algorithm>
#include <set>

namespace morva {

namespace {

// Drops every stroke that is repeated later on: the repetition covers each of its pixels.
void DropRepeated(std::vector<Stroke>& strokes) {
  std::set<Stroke> seen;
  std::vector<Stroke> kept;
  for (auto stroke = strokes.rbegin(); stroke != strokes.rend(); ++stroke) {
    if (seen.insert(*stroke).second) kept.push_back(*stroke);
  }
  std::reverse(kept.begin(), kept.end());
  strokes = std::move(kept);
}

}  // namespace

void Surface::Cls() {
  strokes_.clear();
  next_tidying_ = 1024;
  if (drawn_) drawn_();
}

void Surface::Line(double x1, double y1, double x2, double y2, Color color) {
  Add({Stroke::Kind::kLine, static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
       static_cast<float>(y2), DrawWidth, color, kBlack, 0});
}

void Surface::Circle(double x, double y, double radius, Color color) {
  Add({Stroke::Kind::kCircle, static_cast<float>(x), static_cast<float>(y), static_cast<float>(radius), 0.0F, DrawWidth,
       color, FillSolid ? FillColor : kBlack, FillSolid ? 1 : 0});
}

void Surface::Add(const Stroke& stroke) {
  strokes_.push_back(stroke);
  if (strokes_.size() >= next_tidying_) {
    DropRepeated(strokes_);
    next_tidying_ = std::max<std::size_t>(1024, 2 * strokes_.size());
  }
  if (drawn_) drawn_();
}

}  // namespace morva
