#pragma once

#include <QIcon>
#include <QProxyStyle>

namespace morva {

/// One look on every desktop: the layouts are made for it to the pixel.
class Style : public QProxyStyle {
 public:
  Style() : QProxyStyle("Fusion") {}
  using QProxyStyle::polish;
  /// Makes the desktop's text colours readable on their backgrounds; readable ones stay.
  void polish(QPalette& palette) override;
  /// Gives tool tips the same colours; desktops set others.
  void polish(QWidget* widget) override;
  /// On the application: corrects colours and fonts that are set past the style.
  bool eventFilter(QObject* receiver, QEvent* event) override;
  /// Also outlines input lines, buttons, lists and menus on a dark window.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  /// Draws the separators of dark menus.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  /// Draws the icons of message boxes, so that they zoom.
  QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override;
  /// Makes room for the column of check marks, which Fusion draws as wide as an item is high.
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
};

}  // namespace morva
