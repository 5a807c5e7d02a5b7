// The store on real files: other writers, files that cannot be used, folders that cannot be written.
#include "settings/SettingsStore.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "adapters/posix/FileSystem.h"
#include "fakes/MemorySettingsFile.h"
#include "settings/TestStore.h"

namespace spectrino {
namespace {

namespace fs = std::filesystem;
using test::StoreTest;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

TEST_F(StoreTest, SeesWhatOthersWriteAndKeepsItInItsOwnWrites) {
  Write("[PAN]\nMD=3\n", "Bexmora");
  EXPECT_EQ(Store.GetSetting("Bexmora", "PAN", "MD", ""), "3");
  Write("[PAN]\nMD=2\n", "Bexmora");  // in place, the same size
  EXPECT_EQ(Store.GetSetting("Bexmora", "PAN", "MD", ""), "2");
  Write("[PAN]\nMD=2\nFW=500\n", "Bexmora");
  Store.SaveSetting("Bexmora", "PAN", "MD", "7");
  EXPECT_EQ(OnDisk("Bexmora"), "[PAN]\nMD=7\nFW=500\n");
  Store.Publish("Bexmora", "PAN", "FW", "2700");
  EXPECT_EQ(Store.GetSetting("Bexmora", "pan", "fw", ""), "2700") << "published beats the file";
  Store.Withdraw("Bexmora", "PAN");
  EXPECT_EQ(Store.GetSetting("Bexmora", "PAN", "FW", ""), "500");
}

TEST_F(StoreTest, HoldsTheLastValuesWhileAnotherProgramRewritesItsFile) {
  Write("[PAN]\nMD=3\n", "Bexmora");
  ASSERT_EQ(Store.GetSetting("Bexmora", "PAN", "MD", ""), "3");
  Write("", "Bexmora");
  EXPECT_EQ(Store.GetSetting("Bexmora", "PAN", "MD", ""), "3");
  Time.Advance(std::chrono::milliseconds(49));
  EXPECT_EQ(Store.GetSetting("Bexmora", "PAN", "MD", ""), "3");
  Time.Advance(std::chrono::milliseconds(1));
  EXPECT_EQ(Store.GetSetting("Bexmora", "PAN", "MD", ""), "") << "the program has ended and cleaned up";
}

TEST_F(StoreTest, SetsItsOwnUnusableFileAsideAndSaysWhere) {
  const std::string garbage("[Setup]\nRef=-66\n\0\0\0", 20);
  Write(garbage);
  EXPECT_EQ(Store.GetSetting("Spectrino", "Setup", "Ref", "-60"), "-60");
  Store.SaveSetting("Spectrino", "Setup", "Ref", "-63");
  EXPECT_EQ(OnDisk(), "[Setup]\nRef=-63\n");
  ASSERT_THAT(Notes.Messages, SizeIs(1));
  const std::string& told = Notes.Messages[0];
  std::string kept;
  for (const auto& entry : fs::directory_iterator(Folder.Path("spectrino")))
    if (entry.path().string().find(".ini.corrupt-") != std::string::npos) kept = entry.path().filename();
  EXPECT_THAT(told, AllOf(HasSubstr(File.PathOf("Spectrino")), HasSubstr("binary data"), HasSubstr(kept)));
  EXPECT_EQ(Folder.Text("spectrino/" + kept), garbage);
}

TEST_F(StoreTest, LeavesAnotherProgramsUnusableFileAlone) {
  Write("[PAN]\nMD=3\n", "Ketrel");
  ASSERT_EQ(Store.GetSetting("Ketrel", "PAN", "MD", ""), "3");
  Write("[PAN]\nMD=\xE2", "Ketrel");
  EXPECT_EQ(Store.GetSetting("Ketrel", "PAN", "MD", ""), "3");
  EXPECT_THAT(Notes.Messages, IsEmpty());
  Store.SaveSetting("Ketrel", "PAN", "RXFreq", "14.05");
  EXPECT_THAT(Notes.Messages, ElementsAre(AllOf(HasSubstr("Ketrel.ini"), HasSubstr("UTF-8"))));
  EXPECT_EQ(OnDisk("Ketrel"), "[PAN]\nMD=\xE2");
  Write("[PAN]\nMD=2\n", "Ketrel");
  Store.SaveSetting("Ketrel", "PAN", "TXFreq", "14.06");
  EXPECT_EQ(OnDisk("Ketrel"), "[PAN]\nMD=2\nRXFreq=14.05\nTXFreq=14.06\n");
}

/// Ways in which a write fails for real, root or not. Undo makes it possible again.
struct Obstacle {
  const char* name;
  void (*place)(const std::string& folder);
  void (*undo)(const std::string& folder);
  const char* reason;
};
class ObstacleTest : public StoreTest, public ::testing::WithParamInterface<Obstacle> {};

TEST_P(ObstacleTest, IsToldOnceAndNothingIsLost) {
  const Obstacle& obstacle = GetParam();
  const std::string folder = Folder.Path("spectrino");
  obstacle.place(folder);
  const std::string before = OnDisk();
  const std::string value(4000, 'x');
  Store.SaveSetting("Spectrino", "Setup", "A", value);
  Store.SaveSetting("Spectrino", "Setup", "B", "2");
  EXPECT_THAT(Notes.Messages,
              ElementsAre(AllOf(StartsWith("Spectrino|"), HasSubstr(folder), HasSubstr(obstacle.reason))));
  EXPECT_EQ(Store.GetSetting("Spectrino", "Setup", "a", ""), value) << "the session goes on with it";
  EXPECT_EQ(OnDisk(), before);
  obstacle.undo(folder);
  Store.SaveSetting("Spectrino", "Setup", "B", "2");  // no change, but something is waiting
  EXPECT_EQ(SettingsStore(File, Notes).GetSetting("Spectrino", "Setup", "A", ""), value);
  EXPECT_EQ(SettingsStore(File, Notes).GetSetting("Spectrino", "Setup", "B", ""), "2");
  EXPECT_THAT(Notes.Messages, SizeIs(1));
}

void LimitFileSize(rlim_t bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = bytes;
  ::setrlimit(RLIMIT_FSIZE, &limit);
}
void MakeFile(const std::string& path) {
  std::ofstream(path) << "in the way";
}
void PlaceFullDisk(const std::string& folder) {
  fs::create_directory(folder);
  std::ofstream(folder + "/Spectrino.ini") << "[Setup]\nRef=-66\n";
  LimitFileSize(1000);
}

INSTANTIATE_TEST_SUITE_P(
    Writes, ObstacleTest,
    ::testing::Values(
        Obstacle{"FolderIsAFile", MakeFile, [](const std::string& folder) { fs::remove(folder); },
                 "Not a directory"},
        Obstacle{"FullDisk", PlaceFullDisk, [](const std::string&) { LimitFileSize(RLIM_INFINITY); },
                 "File too large"},
        Obstacle{"FileCannotBeRead",
                 [](const std::string& folder) {
                   fs::create_directory(folder);
                   fs::create_symlink("Spectrino.ini", folder + "/Spectrino.ini");
                 },
                 [](const std::string& folder) { fs::remove(folder + "/Spectrino.ini"); }, "symbolic links"},
        Obstacle{"LockCannotBeMade",
                 [](const std::string& folder) { fs::create_directories(folder + "/Spectrino.ini.lock"); },
                 [](const std::string& folder) { fs::remove(folder + "/Spectrino.ini.lock"); },
                 "Is a directory"},
        Obstacle{"ReadOnlyFileSystem",
                 [](const std::string& folder) { fs::create_directory_symlink("/proc/self", folder); },
                 [](const std::string& folder) { fs::remove(folder); }, "create"}),
    [](const auto& given) { return given.param.name; });

TEST_F(StoreTest, SavingNeverWaitsForAProgramThatHoldsTheLock) {
  using std::chrono::steady_clock;
  Write("[Setup]\nKept=1\n");
  int ready[2], release[2];
  ASSERT_EQ(::pipe(ready) + ::pipe(release), 0);
  const pid_t holder = ::fork();
  if (holder == 0) {
    std::string reason;
    const auto held = posix::Lock(File.PathOf("Spectrino") + ".lock", std::chrono::seconds(1), reason);
    char byte = 0;
    if (::write(ready[1], &byte, 1) != 1 || ::read(release[0], &byte, 1) < 0) ::_exit(1);
    ::_exit(0);
  }
  char byte = 0;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  Store.WriteInBackground([] {});
  const auto start = steady_clock::now();
  for (int n = 0; n < 20; ++n) Store.SaveSetting("Spectrino", "Setup", "A", std::to_string(n));
  EXPECT_LT(steady_clock::now() - start, std::chrono::milliseconds(50));
  EXPECT_EQ(Store.GetSetting("Spectrino", "Setup", "A", ""), "19");
  const std::string unsaved = Store.Finish(std::chrono::milliseconds(300));
  EXPECT_THAT(unsaved, AllOf(HasSubstr(File.PathOf("Spectrino")), HasSubstr("keeps"),
                             HasSubstr(std::to_string(holder))));
  EXPECT_THAT(Notes.Messages, IsEmpty()) << "it may be done soon";
  ASSERT_EQ(::write(release[1], &byte, 1), 1);
  ::waitpid(holder, nullptr, 0);
  EXPECT_EQ(Store.Finish(std::chrono::seconds(5)), "");
  EXPECT_EQ(OnDisk(), "[Setup]\nKept=1\nA=19\n");
}

TEST(SettingsInBackground, KeepWhatFailedAndWriteTheNewest) {
  MemorySettingsFile file;
  RecordingNotifier notes;
  SettingsStore store(file, notes);
  store.WriteInBackground([] {});
  file.WritesFail = true;
  store.SaveSetting("Spectrino", "Setup", "A", "1");
  store.SaveSetting("Spectrino", "Setup", "B", "1");
  EXPECT_THAT(store.Finish(std::chrono::milliseconds(20)), HasSubstr("Spectrino.ini"));
  store.SaveSetting("Spectrino", "Setup", "A", "2");
  file.WritesFail = false;
  EXPECT_EQ(store.Finish(std::chrono::seconds(5)), "");
  EXPECT_EQ(file.Files["Spectrino"], "[Setup]\nA=2\nB=1\n");
  EXPECT_THAT(notes.Messages, SizeIs(1));
}

TEST_F(StoreTest, AFileThatIsGoodAgainIsNotSetAside) {
  Write("[Setup]\nRef=-66\n");
  const auto never = [](const std::string& text) { return text.empty(); };
  EXPECT_EQ(File.SetAside("Spectrino", never).State, AsideState::GoodNow);
  EXPECT_EQ(OnDisk(), "[Setup]\nRef=-66\n");
}

TEST_F(StoreTest, WritesThroughASymbolicLinkAndKeepsTheAccessRights) {
  Write("");
  fs::remove(File.PathOf("Spectrino"));
  fs::create_directory(Folder.Path("dotfiles"));
  Folder.Put("dotfiles/mine.ini", "# kept\n");
  fs::permissions(Folder.Path("dotfiles/mine.ini"), fs::perms{0640});
  fs::create_symlink("../dotfiles/mine.ini", File.PathOf("Spectrino"));
  Store.SaveSetting("Spectrino", "Setup", "A", "1");
  EXPECT_TRUE(fs::is_symlink(File.PathOf("Spectrino")));
  EXPECT_EQ(Folder.Text("dotfiles/mine.ini"), "# kept\n\n[Setup]\nA=1\n");
  EXPECT_EQ(fs::status(Folder.Path("dotfiles/mine.ini")).permissions(), fs::perms{0640});
}

TEST(DefaultSettingsFolder, FollowsTheDesktopsRules) {
  ::setenv("HOME", "/home/op", 1);
  ::setenv("XDG_CONFIG_HOME", "/cfg", 1);
  EXPECT_EQ(DefaultSettingsFolder(), "/cfg/spectrino");
  ::setenv("XDG_CONFIG_HOME", "relative", 1);
  EXPECT_EQ(DefaultSettingsFolder(), "/home/op/.config/spectrino");
}

}  // namespace
}  // namespace spectrino
