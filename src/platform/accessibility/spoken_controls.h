#pragma once

#include <QAccessibleWidget>

#include "platform/controls/control.h"

namespace morva {

/// A widget that holds others, as assistive tools see it: what is out of sight, covered whole or mere decoration is
/// not there, and a control that belongs to a group stands in its group.
class SpokenContainer : public QAccessibleWidget {
 public:
  explicit SpokenContainer(QWidget& widget, QAccessible::Role role = QAccessible::Client);
  int childCount() const override;
  QAccessibleInterface* child(int index) const override;
  int indexOfChild(const QAccessibleInterface* child) const override;

 protected:
  /// The objects that stand in it, in reading order.
  virtual QObjectList Children() const;
};

/// What assistive tools are given for a control; nullptr where Qt's own answer serves. For
/// QAccessible::installFactory.
QAccessibleInterface* SpokenControl(const QString& kind, QObject* object);

}  // namespace morva
