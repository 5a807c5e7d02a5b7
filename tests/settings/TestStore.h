// A real settings folder of its own for each test, and what the user was told about it.
// Not a fake file: the files are real.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "adapters/posix/PosixSettingsFile.h"
#include "fakes/FakeClock.h"
#include "fakes/Recorders.h"
#include "settings/SettingsStore.h"

namespace spectrino::test {

class TemporaryFolder {
 public:
  TemporaryFolder() { path_ = ::mkdtemp(path_.data()); }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string Path(const std::string& name) const { return path_ + "/" + name; }
  [[nodiscard]] std::string Text(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(Path(name), std::ios::binary).rdbuf();
    return text.str();
  }
  void Put(const std::string& name, std::string_view text) const {
    std::ofstream(Path(name), std::ios::binary | std::ios::trunc) << text;
  }

 private:
  std::string path_ = std::filesystem::temp_directory_path().string() + "/spectrino-test-XXXXXX";
};

/// A store on a folder of its own that ends with the test.
struct StoreTest : ::testing::Test {
  TemporaryFolder Folder;
  RecordingNotifier Notes;
  FakeClock Time;
  PosixSettingsFile File{Folder.Path("spectrino"), std::chrono::milliseconds(50)};
  SettingsStore Store{File, Notes, Time};

  /// What stands before the test begins.
  void Write(std::string_view text, const std::string& application = "Spectrino") const {
    std::filesystem::create_directory(Folder.Path("spectrino"));
    Folder.Put("spectrino/" + application + ".ini", text);
  }
  [[nodiscard]] std::string OnDisk(const std::string& application = "Spectrino") const {
    return Folder.Text("spectrino/" + application + ".ini");
  }
};

}  // namespace spectrino::test
