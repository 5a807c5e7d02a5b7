// The client against the real program on a real bus; gdbus sets what a radio would.
#include "adapters/dbus/DbusBridgePort.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <map>
#include <memory>

#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "host/BridgeBackend.h"

namespace spectrino {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

void Until(const std::function<bool()>& isSo) {
  QElapsedTimer time;
  for (time.start(); !isSo() && time.elapsed() < 10'000;)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  EXPECT_TRUE(isSo());
}

/// A bus of this test alone.
class Bus {
 public:
  Bus() {
    daemon_.start("dbus-daemon", {"--session", "--print-address=1", "--nofork"});
    while (!daemon_.canReadLine() && daemon_.waitForReadyRead(10'000)) {
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", daemon_.readLine().trimmed());
  }
  ~Bus() {
    daemon_.kill();
    daemon_.waitForFinished();
  }

 private:
  QProcess daemon_;
};

class BridgeBench : public ::testing::Test {
 protected:
  BridgeBench() {
    port_.Found = [this] { ++found_; };
    port_.Missing = [this](const std::string& why) { missing_.push_back(why); };
    port_.Told = [this](BridgeItem item, const std::string& text) { items_[item] = text; };
  }

  struct Running {
    Running() {
      Process.start(BRIDGE_PROGRAM);
      while (!Process.canReadLine() && Process.waitForReadyRead(10'000)) {
      }
    }
    ~Running() {
      Process.kill();
      Process.waitForFinished();
    }
    QProcess Process;
  };

  static void Set(const char* name, const QString& value) {
    QProcess::execute(
        "gdbus", {"call", "--session", "-d", "org.spectrino.Bridge", "-o", "/org/spectrino/Bridge", "-m",
                  "org.freedesktop.DBus.Properties.Set", "org.spectrino.Bridge1", name, "<'" + value + "'>"});
  }

  DbusBridgePort port_;
  int found_ = 0;
  std::vector<std::string> missing_;
  std::map<BridgeItem, std::string> items_;
};

TEST_F(BridgeBench, IsFollowedWhenItComesLeavesAndReturns) {
  port_.Open();
  EXPECT_THAT(missing_, IsEmpty()) << "never within the call";
  Until([&] { return !missing_.empty(); });
  EXPECT_THAT(missing_, ElementsAre("the bridge is not running."));
  {
    Running bridge;
    Until([&] { return found_ == 1; });
    Set("VfoAHz", "14074000");
    Until([&] { return items_[BridgeItem::VfoAHz] == "14074000"; });
    Set("Shift", QString(5000, 'x'));
    Until([&] { return items_[BridgeItem::Shift] == std::string(200, 'x'); });
  }
  Until([&] { return missing_.size() == 2; });
  Running again;
  Until([&] { return found_ == 2 && items_[BridgeItem::VfoAHz].empty(); });
  port_.Close();
  Set("VfoAHz", "1");
  QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
  EXPECT_EQ(items_[BridgeItem::VfoAHz], "");
}

TEST_F(BridgeBench, HandsCommandsOverOnceItIsThere) {
  Running bridge;
  QProcess watch;
  watch.start("gdbus", {"monitor", "--session", "-d", "org.spectrino.Bridge"});
  QByteArray seen;
  const auto sees = [&](const char* text) {
    seen += watch.readAll();
    return seen.contains(text);
  };
  Until([&] { return sees("is owned by"); });
  port_.Command("FA00001000000;");
  port_.Open();
  Until([&] { return found_ == 1; });
  port_.Command("FA00014025500;");
  Until([&] { return sees("FA00014025500;"); });
  EXPECT_FALSE(seen.contains("FA00001000000;"));
  watch.kill();
  watch.waitForFinished();
}

/// A bridge on a connection of its own that answers and tells what no bridge should.
class OddBridge final : public QDBusVirtualObject {
 public:
  OddBridge() {
    bus_.registerVirtualObject("/org/spectrino/Bridge", this);
    bus_.registerService("org.spectrino.Bridge");
  }
  ~OddBridge() override { QDBusConnection::disconnectFromBus("odd"); }

  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    ++Asked;
    const bool fails = Failures > 0 && Failures-- > 0;
    return bus.send(fails ? call.createErrorReply(QDBusError::Failed, "not yet")
                          : call.createReply(QVariant(Items)));
  }
  void Tell(const QVariantList& arguments) {
    QDBusMessage signal = QDBusMessage::createSignal("/org/spectrino/Bridge",
                                                     "org.freedesktop.DBus.Properties", "PropertiesChanged");
    signal.setArguments(arguments);
    bus_.send(signal);
  }
  void Tell(const QVariantMap& items) { Tell({"org.spectrino.Bridge1", items, QStringList()}); }

  QVariantMap Items{{"VfoAHz", "14074000"}};
  int Failures = 0;
  int Asked = 0;

 private:
  QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "odd");
};

TEST_F(BridgeBench, IsAskedAgainWhenItsAnswerFailed) {
  OddBridge bridge;
  bridge.Failures = 1;
  port_.Open();
  Until([&] { return items_[BridgeItem::VfoAHz] == "14074000"; });
  EXPECT_THAT(missing_, ElementsAre("not yet."));

  port_.Close();
  bridge.Failures = 3;
  port_.Open();
  Until([&] { return missing_.size() == 2; });
  QElapsedTimer time;
  time.start();
  bridge.Items["VfoAHz"] = "7030000";
  while (found_ == 1 && time.elapsed() < 10'000) {
    bridge.Tell(QVariantMap{{"Offset", "1"}});
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  }
  Until([&] { return items_[BridgeItem::VfoAHz] == "7030000"; });
  EXPECT_LT(time.elapsed(), 2500) << "at once when it is heard: by the pauses alone it were 3 s";
  EXPECT_EQ(missing_.size(), 2U) << "the same failure is told once";
}

TEST_F(BridgeBench, WhatNoBridgeTellsLeavesTheRadioAsItIs) {
  MemorySettingsFile file;
  file.Files["LP-Bridge"] = "[PAN]\nMD=2\n";
  RecordingNotifier user;
  SettingsStore store(file, user);
  PanSettings settings;
  settings.Control = CatControl::BridgeIf;
  const SystemClock clock;
  BridgeLink link(port_, user, clock);
  BridgeBackend backend(link, store, settings, clock);
  backend.Open();
  OddBridge bridge;
  link.OpenDdeLink();
  RadioState radio;
  const auto tells = [&](double mainMHz) {
    Until([&] {
      backend.Refresh(radio);
      return radio.MainFreqMHz == mainMHz;
    });
  };
  tells(14.074);
  bridge.Tell(QVariantMap{{"VfoBHz", "14080000"}, {"Offset", "1500"}, {"Bandwidth", "2400"}});
  const QVariant odd[] = {"no number",
                          "+",
                          ".",
                          "- 5",
                          "nan",
                          "inf",
                          "99999999999999999999999999",
                          QString(100'000, '9'),
                          "-14074000000000000",
                          QString(QChar(0xD800)),
                          7030000,
                          7.03e6,
                          true,
                          QVariantMap{{"VfoAHz", "1"}},
                          QVariantList{1, "2"},
                          QByteArray("7030000"),
                          QStringList{"7030000"}};
  for (const QVariant& value : odd) {
    for (const char* item : kBridgeItems)
      if (item != std::string("Trouble")) bridge.Tell(QVariantMap{{item, value}});
    bridge.Tell(QVariantList{value});
    bridge.Tell(QVariantList{"org.spectrino.Bridge1", value, QStringList()});
  }
  bridge.Tell(QVariantMap{{"VfoAHz", "14074001"}, {"Trouble", 5}});
  tells(14.074001);
  EXPECT_DOUBLE_EQ(radio.SubFreqMHz, 14.08);
  EXPECT_DOUBLE_EQ(backend.LinkOffsetKHz(), 1.5);
  EXPECT_DOUBLE_EQ(radio.MainBandwidthHz, 2400);
  EXPECT_EQ(link.Health().State, LinkState::Live);
  EXPECT_EQ(user.Messages.size(), 0U);
}

}  // namespace
}  // namespace spectrino

int main(int argc, char** argv) {
  const spectrino::Bus bus;
  QCoreApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
