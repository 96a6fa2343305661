#include "platform/drawing/surface.h"

#include <set>

namespace morva {

void Surface::Cls() {
  if (strokes_.empty()) return;
  strokes_.clear();
  tidied_ = 0;
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

void Surface::DropRepeated() {
  // What is drawn on a clear surface hardly repeats itself; what is drawn over it often does.
  if (tidied_ > 0 && strokes_.size() > tidied_) {
    std::set<Stroke> seen;
    std::vector<Stroke> kept;
    for (auto stroke = strokes_.rbegin(); stroke != strokes_.rend(); ++stroke) {
      if (seen.insert(*stroke).second) kept.push_back(*stroke);
    }
    strokes_.assign(kept.rbegin(), kept.rend());
  }
  tidied_ = strokes_.size();
}

void Surface::Add(const Stroke& stroke) {
  strokes_.push_back(stroke);
  if (drawn_) drawn_();
}

}  // namespace morva
