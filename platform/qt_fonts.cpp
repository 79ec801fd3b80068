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

// Qt draws the small letters of small capitals at 7/10 of the size; a little more height than
// designed keeps them legible and still leaves every caption its room.
constexpr double kSmallCapitalsScale = 1.17;

}  // namespace

QFont MakeFont(const FontSpec& spec) {
  const QStringList families = Families(spec.face);
  QFont font(families);
  double pixels = spec.points * 96 / 72;
  if (spec.face == FontFace::kCopperplate && !QFontDatabase::hasFamily(families.first())) {
    font.setCapitalization(QFont::SmallCaps);
    pixels *= kSmallCapitalsScale;
  }
  font.setPixelSize(qRound(pixels));
  font.setWeight(spec.weight);
  return font;
}

}  // namespace platform
