#include "ui/failure.h"

#include <QString>

#include "platform/paths.h"
#include "ui/desktop.h"

namespace ui {

void TellFailure(Desktop& desktop, QWidget* owner, const Failure& failure) {
  std::string text =
      failure.what + "\n" + platform::SystemPath(failure.path).string() + "\n\n" + failure.reason;
  if (!failure.consequence.empty()) text += "\n\n" + failure.consequence;
  const std::string title =
      failure.title.empty() ? std::string(platform::FileNamePart(failure.path)) : failure.title;
  desktop.ShowMessage(owner, QString::fromStdString(text), MessageStyle::kCritical,
                      QString::fromStdString(title));
}

}  // namespace ui
