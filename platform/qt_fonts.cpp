#include "platform/qt_fonts.h"

#include <QFontDatabase>
#include <QStringList>

namespace platform {
namespace {

QStringList Families(FontFace face) {
  switch (face) {
    case FontFace::kCopperplate:
      return {"Copperplate Gothic Light", "Liberation Sans", "Arial", "DejaVu Sans Condensed"};
    case FontFace::kTahoma:
      return {"Tahoma", "DejaVu Sans Condensed", "Liberation Sans"};
    case FontFace::kSansSerif:
      return {"MS Sans Serif", "Microsoft Sans Serif", "Liberation Sans", "Arial"};
    case FontFace::kArial:
      return {"Arial", "Liberation Sans"};
    case FontFace::kCourier:
      return {"Courier", "Courier New", "Liberation Mono"};
  }
  return {};
}

// Qt draws the small letters of small capitals at 7/10 of the size: a little more height than
// designed keeps them legible, a little less width keeps every caption within its room.
constexpr double kSmallCapitalsScale = 1.17;
constexpr int kSmallCapitalsStretch = 88;  // per cent

}  // namespace

QFont MakeFont(const FontSpec& spec) {
  const QStringList families = Families(spec.face);
  const bool smallCapitals =
      spec.face == FontFace::kCopperplate && !QFontDatabase::hasFamily(families.first());
  const double pixels = spec.points * 96 / 72;
  QFont font(families);
  font.setPixelSize(qRound(smallCapitals ? pixels * kSmallCapitalsScale : pixels));
  font.setWeight(spec.weight);
  // Said for every font, or a field would take it over from the frame that it lies in.
  if (smallCapitals) font.setStretch(kSmallCapitalsStretch);
  font.setCapitalization(smallCapitals ? QFont::SmallCaps : QFont::MixedCase);
  return font;
}

}  // namespace platform
