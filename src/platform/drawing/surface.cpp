#include "platform/drawing/surface.h"

namespace morva {

void Surface::Cls() {
  if (strokes_.empty()) return;
  strokes_.clear();
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
  std::erase(strokes_, stroke);  // what is drawn again and again, such as the mark under a drag, does not pile up
  strokes_.push_back(stroke);
  if (drawn_) drawn_();
}

}  // namespace morva
