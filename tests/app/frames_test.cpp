#include <QAbstractScrollArea>
#include <QBackingStore>
#include <QImage>
#include <QTabWidget>
#include <QTest>

#include "tests/support/editor_test.h"
#include "ui/controls.h"

namespace {

class Frames : public support::EditorTest {};

/// The pixels of a list in the picture of its window.
QRect PixelsOf(const QWidget& list, double scale) {
  const QRect place(list.mapTo(list.window(), QPoint()), list.size());
  const auto pixel = [scale](int edge) { return qRound(edge * scale); };
  return {QPoint(pixel(place.left()), pixel(place.top())),
          QPoint(pixel(place.right() + 1) - 1, pixel(place.bottom() + 1) - 1)};
}

/// The frame stays whole between the whole scale factors too (see CMakeLists.txt).
TEST_F(Frames, OfListsAreWhole) {
  app::frmMain& window = OpenWindow();
  auto& tabs = ui::Control<QTabWidget>(window, "SSTab1");
  int checked = 0;
  for (int tab = 0; tab < tabs.count(); ++tab) {
    tabs.setCurrentIndex(tab);
    for (const auto* list : window.findChildren<QAbstractScrollArea*>()) {
      if (!list->isVisible() || list->frameShape() == QFrame::NoFrame) continue;
      ++checked;
      list->viewport()->update();
      QTest::qWait(50);
      // What is on the screen: a picture of the widget alone is painted without the clipping to
      // pixels that cost edges there.
      const auto* picture = dynamic_cast<QImage*>(window.backingStore()->paintDevice());
      ASSERT_NE(picture, nullptr);
      const QRect place = PixelsOf(*list, window.devicePixelRatioF());
      ASSERT_TRUE(picture->rect().contains(place));
      const QRgb inside = list->palette().color(QPalette::Base).rgb();
      const QRgb outside = picture->pixel(place.topLeft() - QPoint(3, 3));
      const auto count = [&](QPoint at, QPoint step, int length) {
        int whole = 0;
        for (; length > 0; --length, at += step) {
          const QRgb pixel = picture->pixel(at);
          whole += pixel != inside && pixel != outside ? 1 : 0;
        }
        return whole;
      };
      const std::string name = list->objectName().toStdString();
      EXPECT_EQ(count(place.topLeft(), {1, 0}, place.width()), place.width()) << name << " above";
      EXPECT_EQ(count(place.bottomLeft(), {1, 0}, place.width()), place.width())
          << name << " below";
      EXPECT_EQ(count(place.topLeft(), {0, 1}, place.height()), place.height()) << name << " left";
      EXPECT_EQ(count(place.topRight(), {0, 1}, place.height()), place.height())
          << name << " right";
    }
  }
  EXPECT_GE(checked, 5);
}

}  // namespace
