#include "platform/qt_controls.h"
