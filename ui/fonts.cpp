#include "ui/fonts.h"

#include <map>

#include <QFontDatabase>
#include <QStringList>

namespace ui {
namespace {

// Two hundred controls share these lists.
const QStringList& Families(FontFace face) {
  static const std::map<FontFace, QStringList> families = {
      {FontFace::kCopperplate,
       {"Copperplate Gothic Light", "Liberation Sans", "Arial", "DejaVu Sans Condensed"}},
      {FontFace::kTahoma, {"Tahoma", "DejaVu Sans Condensed", "Liberation Sans"}},
      {FontFace::kSansSerif, {"MS Sans Serif", "Microsoft Sans Serif", "Liberation Sans", "Arial"}},
      {FontFace::kArial, {"Arial", "Liberation Sans"}},
      {FontFace::kCourier, {"Courier", "Courier New", "Liberation Mono"}},
  };
  return families.at(face);
}

// Qt draws the small letters of small capitals at 7/10 of the size. In the sizes of text a little
// more height than designed keeps them legible, and a little less width keeps every caption within
// its room.
constexpr double kTextPoints = 10;
constexpr double kSmallCapitalsScale = 1.17;
constexpr int kSmallCapitalsStretch = 88;  // per cent

bool HasCopperplate() {
  static const bool has = QFontDatabase::hasFamily(Families(FontFace::kCopperplate).first());
  return has;
}

}  // namespace

QFont MakeFont(const FontSpec& spec) {
  const bool smallCapitals = spec.face == FontFace::kCopperplate && !HasCopperplate();
  const bool adjusted = smallCapitals && spec.points < kTextPoints;
  QFont font(Families(spec.face));
  font.setPixelSize(qRound(spec.points * 96 / 72 * (adjusted ? kSmallCapitalsScale : 1)));
  font.setWeight(spec.weight);
  // Said for every font, or a field would take these over from the frame that it lies in.
  font.setCapitalization(smallCapitals ? QFont::SmallCaps : QFont::MixedCase);
  font.setStretch(adjusted ? kSmallCapitalsStretch : QFont::AnyStretch);
  return font;
}

}  // namespace ui
