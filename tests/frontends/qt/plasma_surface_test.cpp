#include "frontends/qt/wayland/plasma_surface.h"

#include <gtest/gtest.h>

#include <QWindow>

namespace {

TEST(PlasmasSurface, IsNoneOnOtherDisplays) {
  QWindow window;
  window.show();
  EXPECT_EQ(PlasmaSurface::of(window, QPoint(1, 1)), nullptr);
}

}  // namespace
