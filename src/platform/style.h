#pragma once

#include <QIcon>
#include <QProxyStyle>

namespace morva {

/// One look everywhere: the layouts are made for it to the pixel.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle("Fusion") {}
  using QProxyStyle::polish;
  /// Makes every text of the desktop's colours readable on what it stands on; what can be read already stays.
  void polish(QPalette& palette) override;
  /// Gives a tool tip the same colours; desktops hand it others.
  void polish(QWidget* widget) override;
  /// On the application: what sets its colours past the style finds them mended, too, and what sets its font, ours.
  bool eventFilter(QObject* receiver, QEvent* event) override;
  /// Outlines input lines, buttons, lists and menus on a dark window, too.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  /// Draws the lines of dark menus.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  /// Draws the signs of message boxes itself: in the toolkit's size they would be small beside a large text, and
  /// blurred.
  QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override;
  /// Makes room for the column of the check marks, which the style draws as wide as an item is high.
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
};

}  // namespace morva
