#pragma once

#include <QString>
#include <QWidget>
#include <QtGlobal>

namespace platform {

/// The control of a window by its name (`txtSrcPath`, `cmdNameColor(3)`). Windows are built from
/// tables that are known when the program is compiled, so a name without a control of the asked
/// kind is a fault of the program and ends it with a message that names the control.
template <class T>
T& Control(const QWidget& window, const QString& name) {
  T* control = window.findChild<T*>(name);
  if (control == nullptr) qFatal("The window has no such control: %s", qPrintable(name));
  return *control;
}

}  // namespace platform
