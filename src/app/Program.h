// Every long-lived part of the program, built once and in order.
// Ownership and wiring only: no behaviour of its own.
#pragma once

#include <memory>
#include <optional>

#include "adapters/posix/PosixSettingsFile.h"
#include "adapters/qt/QtEventPump.h"
#include "adapters/qt/QtNotifier.h"
#include "adapters/qt/QtSerialPorts.h"
#include "adapters/sound/PulseInput.h"
#include "app/CatServing.h"
#include "app/CommandLine.h"
#include "app/DemoFolder.h"
#include "app/DemoRadio.h"
#include "app/FirstSteps.h"
#include "app/HostServer.h"
#include "app/Radios.h"
#include "app/Remedies.h"
#include "app/frmPan.h"
#include "sim/DemoInput.h"
#include "sim/IqFileInput.h"

namespace spectrino {

class Program {
 public:
  explicit Program(const CommandLine& line);
  ~Program();

  [[nodiscard]] frmPan& Window() { return *window_; }
  [[nodiscard]] PanDisplay& Display() { return display_; }
  [[nodiscard]] StageTimes& Times() { return *times_; }
  [[nodiscard]] std::vector<std::string> SourceNames() const { return devices_->Sources().Names(); }
  [[nodiscard]] bool HasDevices() const { return !devices_->Entries().empty(); }
  /// "You have no audio input devices!", and waits for the answer where somebody can give one.
  void TellNoDevices();
  /// Why a file given with --iq-file cannot be played; empty when all can.
  [[nodiscard]] const QString& IqFileError() const { return iqFileError_; }
  [[nodiscard]] bool Unattended() const { return user_.Unattended(); }
  /// The last Start ended without a run, or with one whose radio was never there.
  [[nodiscard]] bool FailedToRun() const;
  /// Waits until the last settings are saved, 2 s at most; then says which are not, and why.
  [[nodiscard]] std::string FinishSaving();
  /// Nothing was ever stored, nothing was asked for on the command line, and somebody watches.
  [[nodiscard]] bool WantsFirstSteps(const CommandLine& line) const;
  [[nodiscard]] QtNotifier& User() { return user_; }
  [[nodiscard]] const DemoRadio& Demo() const { return *demoRadio_; }
  /// Seconds since the first run began.
  [[nodiscard]] double RunSeconds() const;

 private:
  [[nodiscard]] std::optional<HostServerTask> HostTask(const PanSettings& settings);
  static std::string SettingsFolder(std::optional<DemoFolder>& demo, DemoKind kind);
  void LoadIqFiles(const QStringList& paths);
  void ChooseForThisRun(const CommandLine& line);

  std::optional<DemoFolder> demoFolder_;
  SystemClock clock_;
  QtEventPump pump_;
  QtNotifier user_;
  PosixSettingsFile settingsFile_;
  SettingsStore store_;
  Session session_;
  std::unique_ptr<StageTimes> times_;
  PulseInput pulse_;
  DemoInput demo_;
  QtSerialPorts ports_;
  std::vector<std::unique_ptr<IqFileInput>> iqFiles_;
  QString iqFileError_;
  std::unique_ptr<DeviceList> devices_;
  PanDisplay display_;
  std::unique_ptr<Radios> radios_;
  std::unique_ptr<DemoRadio> demoRadio_;
  std::unique_ptr<RunCycle> cycle_;
  std::unique_ptr<CatServing> cat_;
  HostServer hostServer_;
  std::unique_ptr<frmPan> window_;
  std::unique_ptr<Remedies> remedies_;
  std::unique_ptr<FirstSteps> firstSteps_;
  bool gaveUp_ = false;  ///< the last settings could not be saved
};

}  // namespace spectrino
