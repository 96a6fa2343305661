#include "platform/style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>

#include "platform/drawing/contrast.h"
#include "platform/drawing/desktop_colors.h"
#include "platform/drawing/fonts.h"
#include "platform/drawing/pixels.h"

namespace morva {

namespace {

Ground WindowOf(const QPalette& palette) {
  const Color window = ColorOf(palette.color(QPalette::Window));
  return {window, window};
}

bool IsDark(const QPalette& palette) {
  return Contrast(kWhite, WindowOf(palette)) > Contrast(kBlack, WindowOf(palette));
}

// On a dark window the darker outlines of the style would be lost.
QColor Outline(const QPalette& palette, bool focus = false) {
  constexpr Color kGrey = 0x757575;
  const Color wanted = focus ? ColorOf(palette.color(QPalette::Highlight)) : kGrey;
  return QtColor(Readable(wanted, WindowOf(palette), kReadableLarge));
}

constexpr int kIconSide = 32;  // pixels of the layout

void DrawStop(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xD4, 0x10, 0x10));
  painter.drawEllipse(QRectF(1, 1, 30, 30));
  painter.setPen(QPen(Qt::white, 4.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QLineF(10.5, 10.5, 21.5, 21.5));
  painter.drawLine(QLineF(21.5, 10.5, 10.5, 21.5));
}

void DrawWarning(QPainter& painter) {
  constexpr QPointF kCorners[] = {{16, 3}, {30, 28.5}, {2, 28.5}};
  painter.setPen(QPen(Qt::black, 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(0xFF, 0xD8, 0x20));
  painter.drawPolygon(kCorners, 3);
  painter.setPen(QPen(Qt::black, 3.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QLineF(16, 11.5, 16, 19));
  painter.drawPoint(QPointF(16, 24.5));
}

}  // namespace

void Style::polish(QPalette& palette) {
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const auto color = [&](QPalette::ColorRole role) { return palette.color(group, role); };
    const auto mend = [&](QPalette::ColorRole role, const QColor& one, const QColor& other) {
      const Ground ground = With({ColorOf(one), ColorOf(one)}, ColorOf(other));
      palette.setColor(group, role, QtColor(Readable(ColorOf(color(role)), ground)));
    };
    // Fusion brightens a button's upper edge, and menus.
    mend(QPalette::ButtonText, color(QPalette::Button), color(QPalette::Button).lighter(150));
    mend(QPalette::Text, color(QPalette::Base), color(QPalette::Base).lighter(108));
    mend(QPalette::WindowText, color(QPalette::Window), color(QPalette::Button));
    mend(QPalette::ToolTipText, color(QPalette::ToolTipBase), color(QPalette::ToolTipBase));
    if (IsDark(palette)) palette.setColor(group, QPalette::Mid, Outline(palette));
    // In a scheme of one colour the light edges would be lost.
    if (IsDark(palette) && color(QPalette::Light) == color(QPalette::Window)) {
      palette.setColor(group, QPalette::Light, Outline(palette));
    }
    // The text on a highlight is likely the colour that was meant.
    mend(QPalette::Highlight, color(QPalette::HighlightedText), color(QPalette::HighlightedText));
  }
}

void Style::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (widget->inherits("QTipLabel")) widget->setPalette(QApplication::palette());
}

bool Style::eventFilter(QObject* receiver, QEvent* event) {
  if (receiver == qApp && event->type() == QEvent::ApplicationPaletteChange) {
    QPalette mended = QApplication::palette();
    polish(mended);
    if (mended != QApplication::palette()) QApplication::setPalette(mended);
  }
  // The desktop's font arrives late and would apply to boxes and file dialogs alone, without zoom.
  if (receiver == qApp && event->type() == QEvent::ApplicationFontChange && QApplication::font() != ProgramFont()) {
    QApplication::setFont(ProgramFont());
  }
  return QProxyStyle::eventFilter(receiver, event);
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (!IsDark(option->palette)) return;
  const bool box = element == PE_FrameLineEdit || element == PE_PanelButtonCommand || element == PE_Frame;
  const bool ring = element == PE_IndicatorRadioButton, menu = element == PE_PanelMenu;
  if (!ring && !box && !menu) return;
  const QRectF line = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Outline(option->palette, option->state.testFlag(State_HasFocus)));
  painter->setBrush(Qt::NoBrush);
  const int radius = menu ? 0 : 2;
  if (ring) {
    painter->drawEllipse(line);
  } else {
    painter->drawRoundedRect(line, radius, radius);
  }
  painter->restore();
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (item == nullptr || item->menuItemType != QStyleOptionMenuItem::Separator || !IsDark(option->palette)) return;
  QRect line = option->rect.adjusted(5, 0, -5, 0);
  line.setTop(line.center().y());
  line.setHeight(1);
  painter->fillRect(line, Outline(option->palette));
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  if (metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight) return ToPixels(180);
  if (metric == PM_MessageBoxIconSize) return ToPixels(kIconSide * kTwipsPerPixel);
  if (metric == PM_RadioButtonLabelSpacing) return ToPixels(45);
  const int usual = QProxyStyle::pixelMetric(metric, option, widget);
  return usual > 0 ? std::max(1, ToPixels(usual * kTwipsPerPixel)) : usual;
}

QIcon Style::standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const {
  // The menu bar shows all its items; to read this icon Qt would load all its image plug-ins.
  if (kind == SP_ToolBarHorizontalExtensionButton) return {};
  if (kind != SP_MessageBoxCritical && kind != SP_MessageBoxWarning) {
    return QProxyStyle::standardIcon(kind, option, widget);
  }
  const qreal scale = widget != nullptr ? widget->devicePixelRatioF() : qApp->devicePixelRatio();
  const int side = qRound(pixelMetric(PM_MessageBoxIconSize, option, widget) * scale);
  QPixmap icon(side, side);
  icon.fill(Qt::transparent);
  QPainter painter(&icon);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / double{kIconSide}, side / double{kIconSide});
  const auto draw = kind == SP_MessageBoxCritical ? DrawStop : DrawWarning;
  draw(painter);
  painter.end();
  icon.setDevicePixelRatio(scale);
  return icon;
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                              const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  constexpr int kUsualColumn = 21;  // pixels, counted already
  if (type == CT_MenuItem) size.rwidth() += std::max(0, qRound(size.height() * 0.8) - kUsualColumn);
  return size;
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* answer) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  // The tool window is not active because the main window is: what happens at an activation happens to one of them.
  if (hint == SH_Widget_ShareActivation) return 0;
  return QProxyStyle::styleHint(hint, option, widget, answer);
}

}  // namespace morva
