#pragma once

#include "platform/controls/control.h"

namespace morva {

/// What assistive tools see as one list of controls, those that JoinGroup it, under its SpokenName. Nobody else sees
/// anything of it.
class ControlGroup : public Control {
 public:
  ControlGroup();
};

}  // namespace morva
