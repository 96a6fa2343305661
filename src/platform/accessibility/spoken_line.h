#pragma once

class QAccessibleInterface;
class QLineEdit;

namespace morva {

/// An input line as assistive tools see it. Qt's own answer makes each letter a run of attributes of its own, of which
/// Orca 43 speaks only the first as the line's text.
QAccessibleInterface* SpokenLine(QLineEdit& line);

}  // namespace morva
