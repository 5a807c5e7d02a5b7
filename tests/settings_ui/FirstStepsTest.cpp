// The page of first steps driven as a newcomer would.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "fakes/MemorySettingsFile.h"
#include "fakes/RadioSources.h"
#include "fakes/Recorders.h"
#include "settings/ui/frmFirstSteps.h"

namespace spectrino {
namespace {

using ::testing::HasSubstr;

TEST(FirstSteps, ShowsWhatArrivesAsksForWhatIsMissingAndStoresIt) {
  MemorySettingsFile file;
  RecordingNotifier user;
  SettingsStore store(file, user);
  const std::vector<SoundDevice> devices{{.Name = "A & B", .StableId = "a"},
                                         {.Name = "Bad", .StableId = "b"},
                                         {.Name = "Demo", .StableId = "d", .Kind = SourceKind::Demo}};
  FirstStepsWorld world{.Store = store, .Sources = SourceList(devices, kRadioSources), .Current = 2};
  world.Levels = [] {
    return std::map<std::string, setup::InputLevel>{{"a", {true, -12.4F, -100, {}}},
                                                    {"b", {.Trouble = "It runs at another rate."}}};
  };
  frmFirstSteps page(world);
  std::vector<int> started;
  QObject::connect(&page, &frmFirstSteps::StartWanted, [&](int index) { started.push_back(index); });
  page.show();
  EXPECT_TRUE(page.findChild<QRadioButton*>("optSource2")->isChecked()) << "the demo band";
  EXPECT_EQ(page.findChild<QRadioButton*>("optSource0")->text(), "A && B");

  const auto inputs = page.findChildren<setup::InputRow*>();
  ASSERT_EQ(inputs.size(), 2);
  const auto* level = inputs[0]->findChild<QLabel*>("lblLevel");
  EXPECT_TRUE(QTest::qWaitFor([&] { return level->text() == "L -12 dB   R silent"; }, 5000));
  EXPECT_EQ(inputs[0]->findChild<QProgressBar*>("barLeft")->value(), -12);
  EXPECT_EQ(inputs[0]->findChild<QProgressBar*>("barRight")->value(), -100);
  EXPECT_EQ(inputs[1]->findChild<QLabel*>("lblLevel")->text(), "It runs at another rate.");
  for (const QWidget* control : page.findChildren<QWidget*>()) {
    if (control->focusPolicy() == Qt::NoFocus || qobject_cast<const QAbstractScrollArea*>(control)) continue;
    EXPECT_FALSE(control->accessibleName().isEmpty()) << qPrintable(control->objectName());
  }

  const auto start = [&](const char* option) {
    page.findChild<QRadioButton*>(option)->click();
    page.findChild<QPushButton*>("cmdStepsStart")->click();
    return page.findChild<QLabel*>("lblMissing")->text().toStdString();
  };
  EXPECT_THAT(start("optSource3"), HasSubstr("serial port")) << "an Icom without a port";
  EXPECT_EQ(start("optSource4"), "Enter the K4's address.");
  EXPECT_TRUE(started.empty());
  page.findChild<QLineEdit*>("txtStepsK4")->setText(" k4.local ");
  static_cast<void>(start("optSource5"));
  EXPECT_EQ(started, std::vector<int>{5});
  EXPECT_EQ(store.GetSetting("Spectrino", "Setup", "K4TCP", ""), "k4.local");
}

}  // namespace
}  // namespace spectrino
