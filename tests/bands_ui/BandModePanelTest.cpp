// The band and mode rows: captions by layout, clicks out, and looks that follow the radio in silence.
#include <gmock/gmock.h>

#include <QTest>

#include "bands/ui/BandModePanel.h"

namespace spectrino {
namespace {

using ::testing::ElementsAre;

struct BandModePanelTest : testing::Test {
  BandModePanelTest() {
    QObject::connect(&Panel, &BandModePanel::cmdBand_Click, [this](int i) { Clicks.push_back(i); });
    QObject::connect(&Panel, &BandModePanel::cmdMode_Click, [this](int i) { Clicks.push_back(100 + i); });
    Panel.show();
  }
  QPushButton* Find(const QString& name) { return Panel.findChild<QPushButton*>(name); }
  /// Names of what looks pressed, in order.
  std::string Pressed() {
    QStringList names;
    for (const auto* button : Panel.findChildren<QPushButton*>())
      if (button->isChecked()) names << button->objectName();
    return names.join(' ').toStdString();
  }
  BandModePanel Panel;
  std::vector<int> Clicks;
};

TEST_F(BandModePanelTest, ShowsEachLayout) {
  EXPECT_EQ(Find("cmdMode3")->text(), "am");
  Panel.Show({BandLayout::With60m, ModeLayout::WithReverse});
  EXPECT_EQ(Find("cmdMode3")->text(), "cwr");
  EXPECT_EQ(Find("cmdBand3")->toolTip(), "5.330 - 5.404 MHz");
  EXPECT_FALSE(Find("cmdMode9")->isVisible());
  Panel.Show({BandLayout::HostSplit, ModeLayout::Designed});
  EXPECT_EQ(Find("cmdBand3")->text(), "80b");
  EXPECT_TRUE(Find("cmdMode9")->isVisible());
}

TEST_F(BandModePanelTest, ClicksAskAndTheRadioAnswers) {
  Panel.ShowCurrent(5, 2, false);
  EXPECT_EQ(Pressed(), "cmdBand5 cmdMode2");
  QTest::mouseClick(Find("cmdBand13"), Qt::LeftButton);
  QTest::mouseClick(Find("cmdBand5"), Qt::LeftButton);
  QTest::keyClick(Find("cmdMode9"), Qt::Key_Space);
  EXPECT_THAT(Clicks, ElementsAre(13, 5, 109));
  EXPECT_EQ(Pressed(), "cmdBand5 cmdMode2") << "until the radio is there";
  Panel.ShowCurrent(13, 2, true);
  EXPECT_EQ(Pressed(), "cmdBand13 cmdMode2 cmdMode9");
  Panel.ShowCurrent(std::nullopt, std::nullopt, false);
  EXPECT_EQ(Pressed(), "");
  Panel.Show({BandLayout::With60m, ModeLayout::WithReverse});
  Panel.ShowCurrent(1, 2, true);
  EXPECT_EQ(Pressed(), "cmdBand1 cmdMode2");
  EXPECT_EQ(Clicks.size(), 3U);
}

}  // namespace
}  // namespace spectrino
