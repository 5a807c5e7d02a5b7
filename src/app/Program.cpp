#include "app/Program.h"

#include <QGuiApplication>
#include <QMessageBox>

#include "run/SetupChecks.h"
#include "settings/Keys.h"
#include "settings/SerialAlias.h"
#include "settings/SetupSection.h"

namespace spectrino {
namespace {

constexpr std::uint32_t kDemoSeed = 7;
constexpr int kIcomSimMs = 3;

bool NobodyWatches(const CommandLine& line) {
  return line.QuitAfterSeconds.has_value() || QGuiApplication::platformName() == "offscreen";
}

}  // namespace

Program::Program(const CommandLine& line)
    : user_(NobodyWatches(line)),
      settingsFile_(line.Demo == DemoKind::None ? DefaultSettingsFolder() : demoFolder_.path().toStdString()),
      store_(settingsFile_, user_),
      times_(std::make_unique<StageTimes>()),
      pulse_(user_),
      demo_(
          clock_, [this] { return cycle_->ZeroFreqMHz(); }, kDemoSeed) {
  session_.SearchHost = line.Demo == DemoKind::None;
  LoadIqFiles(line.IqFiles);
  std::vector<SoundInput*> inputs{&pulse_, &demo_};
  for (const auto& file : iqFiles_) inputs.push_back(file.get());
  devices_ = std::make_unique<DeviceList>(std::move(inputs));
  devices_->InitDevices();
  ChooseForThisRun(line);
  // A newcomer has chosen nothing yet: show what the program is about.
  session_.FirstRun = settingsFile_.Stamp(std::string(kOwnApplication)) == 0;
  k4Bands_ = icomBands_ = LoadBandMemory(store_);
  if (line.Demo == DemoKind::K4 || line.Demo == DemoKind::K4D) StartK4Demo(line.Demo == DemoKind::K4D);
  if (line.Demo == DemoKind::Icom) StartIcomDemo();
  k4_ = std::make_unique<K4Rig>(K4Rig::Parts{store_, user_, pump_, clock_,
                                             [this] { return cycle_->StopRequested(); }, k4Bands_,
                                             NobodyWatches(line)});
  icom_ = std::make_unique<IcomRig>(IcomRig::Parts{store_, user_, pump_, clock_, icomBands_});
  RigBackends backends;
  backends.K4 = &k4_->Backend();
  backends.K4Link = &k4_->Link();
  backends.Icom = &icom_->Backend();
  backends.IcomLink = &icom_->Link();
  const RigRouter router(backends);
  cycle_ = std::make_unique<RunCycle>(
      session_, RunParts{*devices_, display_, store_, user_, pump_, clock_, *times_, router});
  window_ = std::make_unique<frmPan>(frmPan::Parts{session_, *devices_, store_, user_, display_, *cycle_,
                                                   *times_, clock_, ports_, *k4_, *icom_});
  window_->SettingsLoaded = [this](const PanSettings& settings) {
    pulse_.SetRealTimePriority(settings.Priority);
  };
}

Program::~Program() = default;

void Program::LoadIqFiles(const QStringList& paths) {
  for (const QString& path : paths) {
    std::string message;
    std::optional<IqFile> file = LoadIqFile(path.toStdString(), message);
    if (!file) {
      iqFileError_ = QString::fromStdString(message);
      return;
    }
    iqFiles_.push_back(std::make_unique<IqFileInput>(clock_, path.toStdString(), std::move(*file)));
  }
}

// A demo and a recording are chosen for this run alone; what is stored stays as it is.
void Program::ChooseForThisRun(const CommandLine& line) {
  SoundInput* wanted = !iqFiles_.empty()           ? static_cast<SoundInput*>(iqFiles_.front().get())
                       : line.Demo == DemoKind::Iq ? static_cast<SoundInput*>(&demo_)
                                                   : nullptr;
  if (wanted == nullptr) return;
  for (const DeviceList::Entry& entry : devices_->Entries()) {
    if (entry.Input == wanted) session_.ForcedDeviceId = entry.Device.StableId;
  }
}

// The simulated radio answers on ports of its own; the settings that lead to it live as long as the demo.
void Program::StartK4Demo(bool isK4D) {
  k4Sim_ = std::make_unique<K4SimServer>(K4SimServer::Options{
      .IsK4D = isK4D, .RateHz = 24, .CatPort = 0, .PanPort = 0, .Operator = false, .Faults = {}});
  if (!k4Sim_->Start()) {
    user_.ShowMessage("Spectrino", "The simulated K4 found no free port on this machine.",
                      Severity::Critical);
    return;
  }
  SetupSection setup(store_);
  SetupBatch(setup)
      .Put(key::kK4, !isK4D)
      .Put(key::kK4D, isK4D)
      .Put(key::kCatControl, static_cast<int>(CatControl::RadioDirect))
      .Put(key::kK4Address, "127.0.0.1")
      .Put(key::kK4CatPort, k4Sim_->CatPort())
      .Put(key::kK4PanPort, k4Sim_->PanPort())
      .Save();
}

// The simulated radio sits behind a pseudo-terminal, opened as a real radio's port is.
void Program::StartIcomDemo() {
  icomSim_ = std::make_unique<IcomSimPort>(IcomSimSetup{}, "", std::chrono::steady_clock::now());
  std::string reason;
  if (!icomSim_->Open(reason)) {
    user_.ShowMessage("Spectrino", "The simulated Icom found no terminal: " + reason, Severity::Critical);
    return;
  }
  QObject::connect(&icomSimTimer_, &QTimer::timeout,
                   [this] { icomSim_->Process(std::chrono::steady_clock::now()); });
  icomSimTimer_.setTimerType(Qt::PreciseTimer);
  icomSimTimer_.start(kIcomSimMs);
  SetupSection setup(store_);
  SetupBatch(setup)
      .Put(key::kIcom, true)
      .Put(key::kCatControl, static_cast<int>(CatControl::RadioDirect))
      .Put(key::kPort, 1)
      .Put(key::kIcAddress, "94")
      .Save();
  SaveSerialAlias(store_, 1, icomSim_->TerminalPath());
}

void Program::TellNoDevices() {
  if (Unattended())
    user_.ShowMessage("Ack!", kNoInputDevices, Severity::Critical);
  else
    QMessageBox::critical(nullptr, "Ack!", kNoInputDevices);
}

double Program::RunSeconds() const {
  return std::chrono::duration<double>(cycle_->TimeInRuns()).count();
}

}  // namespace spectrino
