#pragma once

#include <QFont>

namespace ui {

/// The faces the windows are designed in. Where one is not installed, the nearest of the faces
/// that come with the program's packages stands in for it.
enum class FontFace { kCopperplate, kTahoma, kSansSerif, kArial, kCourier };

/// A font as designed: a size in points means so many 1/72 of an inch at 96 pixels an inch, so
/// that texts keep their proportion to the controls whatever the desktop's resolution.
struct FontSpec {
  FontFace face;
  double points;
  QFont::Weight weight;
};

inline constexpr FontSpec kButtonFont{FontFace::kCopperplate, 9, QFont::Light};
inline constexpr FontSpec kLabelFont{FontFace::kCopperplate, 8.25, QFont::Light};
inline constexpr FontSpec kFrameTitleFont{FontFace::kCopperplate, 8.25, QFont::DemiBold};
inline constexpr FontSpec kFieldFont{FontFace::kTahoma, 8.25, QFont::Normal};
inline constexpr FontSpec kBoldFieldFont{FontFace::kTahoma, 8.25, QFont::Bold};
inline constexpr FontSpec kPlainFont{FontFace::kSansSerif, 8.25, QFont::Normal};
inline constexpr FontSpec kBoldPlainFont{FontFace::kSansSerif, 8.25, QFont::Bold};

/// The installed font for a designed one, sized in pixels.
QFont MakeFont(const FontSpec& spec);

}  // namespace ui
