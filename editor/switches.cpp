#include "editor/switches.h"

#include <QCheckBox>

#include "config/settings.h"
#include "ui/controls.h"

namespace editor {
namespace {

using ui::Control;

void SetMessageOptions(QWidget& window, bool checked) {
  for (const config::Setting& setting : config::Settings()) {
    if (setting.encoding != config::Encoding::kMessageOptions) continue;
    for (const std::string_view option : setting.options) {
      Control<QCheckBox>(window, QString::fromStdString(std::string(option))).setChecked(checked);
    }
  }
}

}  // namespace

void cmdCheckAll_Click(const Context& context) { SetMessageOptions(context.window, true); }

void cmdClearAll_Click(const Context& context) { SetMessageOptions(context.window, false); }

void UpdateCustomRank(QWidget& window) {
  const bool enabled = Control<QCheckBox>(window, "ckUseCustomRank").isChecked();
  for (const char* const name : {"lblCustRank1", "lblCustRank2", "txtCustomRankTemplate",
                                 "txtCustomRankStart", "cmdBrowse5"}) {
    Control<QWidget>(window, name).setEnabled(enabled);
  }
}

void ckUseCustomRank_Click(const Context& context) { UpdateCustomRank(context.window); }

}  // namespace editor
