#include "help/links.h"

#include "ui/desktop.h"

namespace help {
namespace {

constexpr char kMakersSite[] = "http://" VANTREL3_MAKER_HOST;
constexpr char kEnginesSite[] = "http://" VANTREL3_ENGINE_HOST;

void OpenURL(const ui::Context& context, const char* site, const QString& page) {
  context.desktop.OpenUrl(site + page);
}

}  // namespace

// Worked out in decimal digits: as a binary fraction a number such as 1.005 lies just below the
// half and would be rounded the wrong way.
QString VersionText(unsigned major, unsigned minor) {
  const QString decimals = QString::number(minor).leftJustified(3, '0');
  const unsigned roundUp = decimals[2] >= '5' ? 1 : 0;
  const unsigned hundredths = major * 100 + decimals.left(2).toUInt() + roundUp;
  return QStringLiteral("%1.%2").arg(hundredths / 100).arg(hundredths % 100, 2, 10, QChar('0'));
}

void mnuHelpUpdate_Click(const ui::Context& context) {
  OpenURL(
      context, kMakersSite,
      "/tallydesk/update.asp?ver=" + VersionText(VANTREL3_VERSION_MAJOR, VANTREL3_VERSION_MINOR));
}

void mnuHelpFeedback_Click(const ui::Context& context) {
  OpenURL(context, kMakersSite, "/tallydesk/feedback.asp?from=vantrel3");
}

void mnuHelpBugs_Click(const ui::Context& context) {
  OpenURL(context, kMakersSite, "/bugs/default.asp?from=vantrel3");
}

void mnuHelpQuillon_Click(const ui::Context& context) {
  OpenURL(context, kMakersSite, "/default.asp?from=vantrel3");
}

void mnuHelpMorvaneHome_Click(const ui::Context& context) {
  OpenURL(context, kEnginesSite, "/morvane");
}

void mnuHelpQuickStart_Click(const ui::Context& context) {
  ui::ViewTextFile(context.desktop, &context.window, context.programDirectory + "\\quickstart.txt");
}

}  // namespace help
