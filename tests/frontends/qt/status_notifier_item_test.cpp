#include "frontends/qt/bus/status_notifier_item.h"

#include <gtest/gtest.h>

#include "frontends/qt/bus_pair.h"

namespace {

using Signals = std::vector<std::string>;
constexpr const char* kInterface = "org.kde.StatusNotifierItem";

QImage redSquare(int side) {
  QImage image(side, side, QImage::Format_ARGB32);
  image.fill(Qt::red);
  return image;
}

class StatusNotifierItemTest : public testing::Test {
 protected:
  StatusNotifierItemTest()
      : item(pair.served(), {{redSquare(2), redSquare(4)}, {redSquare(3)}}, "/MenuBar") {
    QObject::connect(&item, &StatusNotifierItem::activated, [this](QPoint icon) {
      ++activations;
      place = icon;
    });
    QObject::connect(&item, &StatusNotifierItem::tokenProvided,
                     [this](const QByteArray& token) { tokens.push_back(token.toStdString()); });
    pair.takeSignals();
  }

  BusMessage get(const char* property) const {
    const BusMessage call =
        pair.newCall(StatusNotifierItem::kPath, "org.freedesktop.DBus.Properties", "Get");
    sd_bus_message_append(call.get(), "ss", kInterface, property);
    return pair.send(call);
  }

  std::string text(const char* property, const char* type = "s") const {
    const BusMessage reply = get(property);
    const char* value = "";
    sd_bus_message_read(reply.get(), "v", type, &value);
    return value;
  }

  std::string toolTip() const {
    const BusMessage reply = get("ToolTip");
    const char* title = nullptr;
    const char* description = nullptr;
    sd_bus_message_enter_container(reply.get(), 'v', "(sa(iiay)ss)");
    sd_bus_message_enter_container(reply.get(), 'r', "sa(iiay)ss");
    sd_bus_message_skip(reply.get(), "sa(iiay)");
    sd_bus_message_read(reply.get(), "ss", &title, &description);
    EXPECT_STREQ(description, "");
    return title;
  }

  void click(const char* member) const {
    const BusMessage call = pair.newCall(StatusNotifierItem::kPath, kInterface, member);
    sd_bus_message_append(call.get(), "ii", 10, 20);
    EXPECT_FALSE(sd_bus_message_is_method_error(pair.send(call).get(), nullptr));
  }

  BusPair pair;
  StatusNotifierItem item;
  int activations = 0;
  QPoint place;
  std::vector<std::string> tokens;
};

TEST_F(StatusNotifierItemTest, SaysWhatItIs) {
  EXPECT_EQ(text("Id"), "vorda");
  EXPECT_EQ(text("Category"), "SystemServices");
  EXPECT_EQ(text("Status"), "Active");
  EXPECT_EQ(text("Menu", "o"), "/MenuBar");
}

TEST_F(StatusNotifierItemTest, NewTitleIsTold) {
  item.setTitle("Vorda² — Memory 62 percent used");
  EXPECT_EQ(pair.takeSignals(), Signals{"NewTitle"});
  EXPECT_EQ(text("Title"), "Vorda² — Memory 62 percent used");
}

TEST_F(StatusNotifierItemTest, NewToolTipIsToldOnce) {
  item.setToolTip("Vorda\nHalvek");
  item.setToolTip("Vorda\nHalvek");
  EXPECT_EQ(pair.takeSignals(), Signals{"NewToolTip"});
  EXPECT_EQ(toolTip(), "Vorda\nHalvek");
}

TEST_F(StatusNotifierItemTest, SaysNothingWhileItIsQuiet) {
  item.setTitle("Vorda²");
  item.setToolTip("Vorda");
  pair.takeSignals();
  item.setQuiet(true);
  EXPECT_EQ(pair.takeSignals(), (Signals{"NewTitle", "NewToolTip"}));
  EXPECT_EQ(toolTip(), "");
  EXPECT_EQ(text("Title"), "");
  item.setToolTip("other");
  EXPECT_TRUE(pair.takeSignals().empty());
  item.setQuiet(false);
  EXPECT_EQ(pair.takeSignals(), (Signals{"NewTitle", "NewToolTip"}));
  EXPECT_EQ(toolTip(), "other");
  EXPECT_EQ(text("Title"), "Vorda²");
}

TEST_F(StatusNotifierItemTest, OffersItsPicturesInNetworkByteOrder) {
  const BusMessage reply = get("IconPixmap");
  sd_bus_message_enter_container(reply.get(), 'v', "a(iiay)");
  sd_bus_message_enter_container(reply.get(), 'a', "(iiay)");
  for (const int side : {2, 4}) {
    int width = 0;
    int height = 0;
    const void* pixels = nullptr;
    std::size_t size = 0;
    ASSERT_GT(sd_bus_message_enter_container(reply.get(), 'r', "iiay"), 0);
    sd_bus_message_read(reply.get(), "ii", &width, &height);
    sd_bus_message_read_array(reply.get(), 'y', &pixels, &size);
    sd_bus_message_exit_container(reply.get());
    EXPECT_EQ(width, side);
    EXPECT_EQ(height, side);
    ASSERT_EQ(size, static_cast<std::size_t>(4 * side * side));
    const auto* argb = static_cast<const unsigned char*>(pixels);
    EXPECT_EQ((std::vector<int>{argb[0], argb[1], argb[2], argb[3]}),
              (std::vector<int>{255, 255, 0, 0}));
  }
}

TEST_F(StatusNotifierItemTest, AsksForAttentionAndTellsOnce) {
  item.setNeedsAttention(true);
  item.setNeedsAttention(true);
  EXPECT_EQ(text("Status"), "NeedsAttention");
  const char* told = "";
  sd_bus_message_read(pair.lastSignal("NewStatus"), "s", &told);
  EXPECT_STREQ(told, "NeedsAttention");
  EXPECT_EQ(pair.takeSignals(), Signals{"NewStatus"});
  item.setNeedsAttention(false);
  EXPECT_EQ(text("Status"), "Active");
  EXPECT_EQ(pair.takeSignals(), Signals{"NewStatus"});
}

TEST_F(StatusNotifierItemTest, HasAnotherPictureForAttention) {
  const BusMessage reply = get("AttentionIconPixmap");
  sd_bus_message_enter_container(reply.get(), 'v', "a(iiay)");
  sd_bus_message_enter_container(reply.get(), 'a', "(iiay)");
  sd_bus_message_enter_container(reply.get(), 'r', "iiay");
  int width = 0;
  int height = 0;
  sd_bus_message_read(reply.get(), "ii", &width, &height);
  EXPECT_EQ(width, 3);
}

TEST_F(StatusNotifierItemTest, EveryKindOfClickOpensTheMenu) {
  click("Activate");
  click("ContextMenu");
  click("SecondaryActivate");
  EXPECT_EQ(activations, 3);
  EXPECT_EQ(place, QPoint(10, 20));
}

TEST_F(StatusNotifierItemTest, HostProvidesATokenForTheKeyboard) {
  for (const std::string& token : {std::string("kwin-17"), std::string(), std::string("two words"),
                                   std::string("a\nb"), std::string(257, 'x')}) {
    const BusMessage call =
        pair.newCall(StatusNotifierItem::kPath, kInterface, "ProvideXdgActivationToken");
    sd_bus_message_append(call.get(), "s", token.c_str());
    EXPECT_FALSE(sd_bus_message_is_method_error(pair.send(call).get(), nullptr));
  }
  EXPECT_EQ(tokens, std::vector<std::string>{"kwin-17"});
}

TEST_F(StatusNotifierItemTest, ScrollingDoesNothing) {
  const BusMessage call = pair.newCall(StatusNotifierItem::kPath, kInterface, "Scroll");
  sd_bus_message_append(call.get(), "is", 1, "vertical");
  EXPECT_FALSE(sd_bus_message_is_method_error(pair.send(call).get(), nullptr));
  EXPECT_EQ(activations, 0);
}

}  // namespace
