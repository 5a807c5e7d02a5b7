// Writers that are killed, and writers that meet.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <thread>

#include "settings/TestStore.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;
using test::TemporaryFolder;

/// Runs work in a process of its own, which ends with it.
template <typename Work>
pid_t Fork(Work work) {
  const pid_t child = ::fork();
  if (child == 0) {
    work();
    ::_exit(0);
  }
  return child;
}

TEST(Torture, AKilledWriterLeavesTheOldTextOrTheNew) {
  constexpr int kValueBytes = 500'000;  // large enough that a kill finds a write half done
  const TemporaryFolder folder;
  PosixSettingsFile file(folder.Path("s"), 30s);
  std::mt19937 random(1);
  for (int round = 0; round < 60; ++round) {
    int written[2];
    ASSERT_EQ(::pipe(written), 0);
    const pid_t child = Fork([&] {
      RecordingNotifier notes;
      SettingsStore store(file, notes);
      for (char c = 'a';; c = c == 'z' ? 'a' : static_cast<char>(c + 1)) {
        store.SaveSetting("Spectrino", "Setup", "Value", std::string(kValueBytes, c));
        if (::write(written[1], &c, 1) != 1) return;
      }
    });
    ASSERT_GT(child, 0);
    ::close(written[1]);
    char first = 0;
    EXPECT_EQ(::read(written[0], &first, 1), 1);  // at least one write got through
    std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution(0, 20000)(random)));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(written[0]);

    std::string reason;
    const std::string text = file.Read("Spectrino", reason).value_or("");
    ASSERT_GT(text.size(), 2U) << "gone in round " << round << reason;
    const std::string whole(kValueBytes, text[text.size() - 2]);
    ASSERT_TRUE(text == "[Setup]\nValue=" + whole + "\n") << "torn in round " << round;
    // The killed writer's lock is gone with it, and what it left lying about is in nobody's way.
    ASSERT_TRUE(file.Update("Spectrino", [](const std::string& old) { return old + ' '; }).Ok);
    const auto stamp = file.Stamp("Spectrino");
    ASSERT_TRUE(file.Update("Spectrino", [](const std::string& old) { return old; }).Ok);
    ASSERT_NE(file.Stamp("Spectrino"), stamp) << "the same text is written too: it may be a command";
    ASSERT_TRUE(file.Update("Spectrino", [](const std::string&) { return ""; }).Ok);
  }
}

TEST(Torture, FourWritersAtOnceLoseNoKey) {
  const TemporaryFolder folder;
  RecordingNotifier notes;
  const auto eachKey = [](int writer, auto use) {
    for (int n = 0; n < 50; ++n) use("W" + std::to_string(writer) + "N" + std::to_string(n));
  };
  std::vector<pid_t> writers;
  for (int writer = 0; writer < 4; ++writer)
    writers.push_back(Fork([&] {
      PosixSettingsFile file(folder.Path("s"), 30s);
      SettingsStore store(file, notes);
      eachKey(writer, [&](const std::string& key) { store.SaveSetting("Spectrino", "Setup", key, "1"); });
      if (!notes.Messages.empty()) ::_exit(1);
    }));
  PosixSettingsFile file(folder.Path("s"));
  for (const pid_t writer : writers) {
    int status = -1;
    ASSERT_EQ(::waitpid(writer, &status, 0), writer);
    EXPECT_EQ(status, 0);
  }
  SettingsStore store(file, notes);
  for (int writer = 0; writer < 4; ++writer)
    eachKey(writer, [&](const std::string& key) {
      EXPECT_EQ(store.GetSetting("Spectrino", "Setup", key, "0"), "1") << key;
    });
}

// A shell script or an editor knows nothing of the lock: it truncates the file and writes it again.
TEST(Torture, AProgramThatRewritesTheFileInPlaceKeepsItsKeys) {
  constexpr int kTrials = 12;
  const TemporaryFolder folder;
  std::string text = "[Setup]\n";
  for (int n = 0; n < 50; ++n) text += "Other" + std::to_string(n) + "=1\n";
  std::mt19937 random(1);
  int lost = 0;
  for (int trial = 0; trial < kTrials; ++trial) {
    const std::string name = "s/Spectrino.ini";
    std::filesystem::create_directory(folder.Path("s"));
    folder.Put(name, text);
    PosixSettingsFile file(folder.Path("s"), 5s);
    RecordingNotifier notes;
    SettingsStore store(file, notes);
    EXPECT_EQ(store.GetSetting("Spectrino", "Setup", "Other49", ""), "1");
    const auto pause = std::chrono::microseconds(std::uniform_int_distribution(0, 20000)(random));
    std::this_thread::sleep_for(30ms);
    const pid_t script = Fork([&] {
      std::ofstream out(folder.Path(name), std::ios::binary | std::ios::trunc);
      for (std::size_t at = 0; at < text.size(); at += 100) {
        std::this_thread::sleep_for(2ms);
        out << text.substr(at, 100) << std::flush;
      }
    });
    std::this_thread::sleep_for(pause);
    store.SaveSetting("Spectrino", "Setup", "Ours", std::to_string(trial));
    ::waitpid(script, nullptr, 0);
    std::string reason;
    const std::string after = file.Read("Spectrino", reason).value_or("");
    for (int n = 0; n < 50; ++n)
      if (after.find("Other" + std::to_string(n) + "=1\n") == std::string::npos) {
        ++lost;
        break;
      }
  }
  EXPECT_EQ(lost, 0) << "of " << kTrials;
}

}  // namespace
}  // namespace spectrino
