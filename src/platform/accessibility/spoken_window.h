#pragma once

#include <QString>

class QAccessibleInterface;
class QObject;

namespace morva {

/// What assistive tools are given for a window and its client area; nullptr for anything else. For
/// QAccessible::installFactory.
QAccessibleInterface* SpokenWindow(const QString& kind, QObject* object);

}  // namespace morva
