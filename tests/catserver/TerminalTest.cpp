// The terminal as programs find it: raw, always in the same place, and nobody else's.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "adapters/posix/PosixTerminal.h"

namespace spectrino {
namespace {

namespace fs = std::filesystem;

struct Terminal : testing::Test {
  Terminal() {
    std::string name = (fs::temp_directory_path() / "terminalXXXXXX").string();
    Folder = ::mkdtemp(name.data());
    Link = (Folder / "spectrino" / "cat").string();
  }
  ~Terminal() override { fs::remove_all(Folder); }
  fs::path Folder;
  std::string Link;
};

TEST_F(Terminal, CarriesEveryByteAndForgetsItsVisitors) {
  PosixTerminal terminal(Link);
  std::string heard;
  int left = 0;
  terminal.DataArrival = [&](std::span<const std::uint8_t> bytes) {
    heard.append(bytes.begin(), bytes.end());
  };
  terminal.Left = [&] { ++left; };
  ASSERT_EQ(terminal.Open(), "");
  EXPECT_EQ(terminal.Path(), Link);
  const std::string all("\x03\x04\x11\x13\r\n\x7f\xff;", 9);
  for (int visit = 1; visit <= 2; ++visit) {
    const int program = ::open(Link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    ASSERT_GE(program, 0);
    ASSERT_EQ(::write(program, all.data(), all.size()), static_cast<ssize_t>(all.size()));
    terminal.Process();
    EXPECT_EQ(std::exchange(heard, {}), all);
    terminal.Write(all);
    std::array<char, 64> buffer{};
    EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(::read(program, buffer.data(), 64))), all);
    EXPECT_EQ(left, visit - 1);
    terminal.Write("left unread;");
    termios cooked{};
    ::tcgetattr(program, &cooked);
    cooked.c_lflag |= ICANON;
    ::tcsetattr(program, TCSANOW, &cooked);
    ::close(program);
    terminal.Process();
    EXPECT_EQ(left, visit);
  }
  // Nobody reads: what does not fit is lost, and nothing waits for it.
  for (int i = 0; i < 1000; ++i) terminal.Write(std::string(1000, 'x'));
  terminal.Close();
  EXPECT_FALSE(fs::is_symlink(Link));
}

TEST_F(Terminal, TakesOverFromTheDeadAndLeavesTheLivingAlone) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t other = ::fork();
  if (other == 0) {
    PosixTerminal theirs(Link);
    const bool opened = theirs.Open().empty() && theirs.Path() == Link;
    static_cast<void>(!::write(ready[1], opened ? "y" : "n", 1));
    ::pause();
    ::_exit(0);
  }
  char answer = 0;
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  ASSERT_EQ(answer, 'y');
  const fs::path theirs = fs::read_symlink(Link);
  {
    PosixTerminal ours(Link);
    ASSERT_EQ(ours.Open(), "");
    EXPECT_EQ(ours.LinkTrouble(), Link + " belongs to another Spectrino that runs");
    EXPECT_TRUE(ours.Path().starts_with("/dev/pts/"));
  }
  EXPECT_EQ(fs::read_symlink(Link), theirs);
  ::kill(other, SIGKILL);
  ::waitpid(other, nullptr, 0);
  ::close(ready[0]);
  ::close(ready[1]);
  EXPECT_TRUE(fs::is_symlink(Link)) << "left behind";
  PosixTerminal ours(Link);
  ASSERT_EQ(ours.Open(), "");
  EXPECT_EQ(ours.Path(), Link);
  const int program = ::open(Link.c_str(), O_RDWR | O_NOCTTY);
  EXPECT_GE(program, 0);
  ::close(program);
  ours.Close();
  // What is no link is not ours to remove.
  std::filesystem::create_directory(Link);
  ASSERT_EQ(ours.Open(), "");
  EXPECT_TRUE(ours.Path().starts_with("/dev/pts/"));
}

}  // namespace
}  // namespace spectrino
