// Every long-lived part of the program, built once and in order.
// Ownership and wiring only: no behaviour of its own.
#pragma once

#include <QTemporaryDir>
#include <chrono>
#include <memory>
#include <optional>

#include "app/CommandLine.h"
#include "app/IcomRig.h"
#include "app/K4Rig.h"
#include "app/frmPan.h"
#include "platform/posix/PosixSettingsFile.h"
#include "platform/qt/QtEventPump.h"
#include "platform/qt/QtNotifier.h"
#include "platform/qt/QtSerialPorts.h"
#include "platform/sound/PulseInput.h"
#include "sim/DemoInput.h"
#include "sim/IqFileInput.h"
#include "sim/icom/IcomSimPort.h"
#include "sim/k4/K4SimServer.h"

namespace spectrino {

class Program {
 public:
  explicit Program(const CommandLine& line);
  ~Program();

  [[nodiscard]] frmPan& Window() { return *window_; }
  [[nodiscard]] PanDisplay& Display() { return display_; }
  [[nodiscard]] StageTimes& Times() { return *times_; }
  [[nodiscard]] std::vector<std::string> SourceNames() const { return devices_->Names(); }
  [[nodiscard]] bool HasDevices() const { return devices_->SoundInputCount() > 0; }
  /// "You have no audio input devices!", and waits for the answer where somebody can give one.
  void TellNoDevices();
  /// Why a file given with --iq-file cannot be played; empty when all can.
  [[nodiscard]] const QString& IqFileError() const { return iqFileError_; }
  [[nodiscard]] bool Unattended() const { return user_.Unattended(); }
  /// The last Start ended without a run.
  [[nodiscard]] bool FailedToRun() const { return cycle_->StartFailed(); }
  /// The simulated K4 of a demo; null in any other run.
  [[nodiscard]] K4SimServer* SimulatedK4() const { return k4Sim_.get(); }
  [[nodiscard]] IcomSimPort* SimulatedIcom() const { return icomSim_.get(); }
  /// Seconds since the first run began.
  [[nodiscard]] double RunSeconds() const;

 private:
  void LoadIqFiles(const QStringList& paths);
  void ChooseForThisRun(const CommandLine& line);
  void StartK4Demo(bool isK4D);
  void StartIcomDemo();

  QTemporaryDir demoFolder_;
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
  BandMemory k4Bands_;  // modes are a K4's codes here and an Icom's indices there
  BandMemory icomBands_;
  PanDisplay display_;
  std::unique_ptr<K4SimServer> k4Sim_;
  std::unique_ptr<K4Rig> k4_;
  std::unique_ptr<IcomSimPort> icomSim_;
  QTimer icomSimTimer_;
  std::unique_ptr<IcomRig> icom_;
  std::unique_ptr<RunCycle> cycle_;
  std::unique_ptr<frmPan> window_;
};

}  // namespace spectrino
