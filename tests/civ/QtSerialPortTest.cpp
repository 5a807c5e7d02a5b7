// A real serial device, as far as one can be had without a radio: the pseudo-terminal's.
#include "adapters/qt/QtSerialPort.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <string>

#include "adapters/qt/QtSerialPortTrouble.h"

namespace spectrino::test {
namespace {

struct QtSerialPortTest : ::testing::Test {
  /// A bare root without /dev/pts has no pseudo-terminals to test with.
  void SetUp() override {
    if (Path.empty()) GTEST_SKIP() << "no pseudo-terminals here: /dev/pts is not mounted";
  }
  QtSerialPortTest() {
    if (::grantpt(Radio) == 0 && ::unlockpt(Radio) == 0) {
      if (const char* name = ::ptsname(Radio)) Path = name;
    }
    Port.DataArrival = [this](std::span<const std::uint8_t> bytes) {
      Heard.append(bytes.begin(), bytes.end());
    };
    Port.Lost = [this](const std::string& reason) {
      EXPECT_FALSE(Port.IsOpen());
      Losses.push_back(reason);
    };
  }
  ~QtSerialPortTest() override { Unplug(); }

  void Unplug() {
    if (Radio >= 0) ::close(Radio);
    Radio = -1;
  }
  /// Events flow until the condition holds, two seconds at most.
  template <typename Condition>
  bool Until(Condition holds) {
    QElapsedTimer time;
    for (time.start(); !holds() && time.elapsed() < 2000;)
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return holds();
  }
  std::string ReadAtRadio() {
    char text[64];
    const auto count = ::read(Radio, text, sizeof text);
    return count > 0 ? std::string(text, static_cast<std::size_t>(count)) : std::string();
  }

  int argc_ = 1;
  char name_[5] = "test";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication Application{argc_, argv_};
  int Radio = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
  std::string Path;
  QtSerialPort Port;
  std::string Heard;
  std::vector<std::string> Losses;
};

// Every byte value: a line discipline left on would swallow or change some.
TEST_F(QtSerialPortTest, CarriesEveryByteBothWaysAndDrainsOnClose) {
  ASSERT_EQ(Port.Open(Path), "");
  std::string all(256, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i);
  ASSERT_EQ(::write(Radio, all.data(), all.size()), 256);
  EXPECT_TRUE(Until([&] { return Heard.size() == all.size(); }));
  EXPECT_EQ(Heard, all);

  for (void (QtSerialPort::*const close)() : {&QtSerialPort::CloseWhenSent, &QtSerialPort::Close}) {
    ASSERT_EQ(Port.Open(Path), "");
    Port.Write({reinterpret_cast<const std::uint8_t*>(all.data()), all.size()});
    (Port.*close)();
    EXPECT_FALSE(Port.IsOpen());
    EXPECT_EQ(Port.Closing(), close == &QtSerialPort::CloseWhenSent);
    std::string got;
    Until([&] {
      got += ReadAtRadio();
      return got.size() >= all.size();
    });
    EXPECT_EQ(got, all);
    EXPECT_TRUE(Until([&] { return !Port.Closing(); })) << "nobody has to wait for the next Open";
  }
  EXPECT_TRUE(Losses.empty());
}

TEST_F(QtSerialPortTest, APulledPortIsToldOnceAndClosed) {
  ASSERT_EQ(Port.Open(Path), "");
  Unplug();
  EXPECT_TRUE(Until([&] { return !Losses.empty(); }));
  Until([] { return false; });
  EXPECT_EQ(Losses.size(), 1U);
  EXPECT_EQ(Losses[0], Path + " was unplugged");
}

TEST_F(QtSerialPortTest, SaysWhyADeviceCannotBeOpened) {
  EXPECT_EQ(Port.Open("/dev/no-such-radio"),
            "/dev/no-such-radio is not there: is the cable in, and the radio on?");
  EXPECT_NE(Port.Open("/dev/null").find("/dev/null cannot be opened: "), std::string::npos);
  EXPECT_FALSE(Port.IsOpen());

  SerialPortHolder none;
  EXPECT_EQ(SerialPortTrouble(Path, true, "", none), Path + " is in use by another program");
  QProcess holder;
  holder.setStandardInputFile(QString::fromStdString(Path));
  holder.start("sleep", {"10"});
  ASSERT_TRUE(holder.waitForStarted(2000));
  SerialPortHolder found;
  EXPECT_EQ(SerialPortTrouble(Path, true, "", found),
            Path + " is in use by sleep (process " + std::to_string(holder.processId()) + ")");
  holder.kill();
  holder.waitForFinished(2000);
  EXPECT_EQ(SerialPortTrouble(Path, true, "", found), Path + " is in use by another program")
      << "a holder that has ended is not kept";
}

}  // namespace
}  // namespace spectrino::test
