// The client against the real program on a real bus; gdbus sets what a radio would.
#include "adapters/dbus/DbusBridgePort.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <map>
#include <memory>

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
    Until([&] { return items_[BridgeItem::Shift] == std::string(64, 'x'); });
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

}  // namespace
}  // namespace spectrino

int main(int argc, char** argv) {
  const spectrino::Bus bus;
  QCoreApplication application(argc, argv);
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
