#include "app/Program.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <utility>

#include "app/ServerProbe.h"
#include "host/HostBackend.h"
#include "run/SetupChecks.h"
#include "settings/Keys.h"

namespace spectrino {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kDemoSeed = 7;
/// The thread that writes tries again: the end of the program must not wait long for one try.
constexpr auto kLockTry = 100ms;
constexpr auto kLastSaving = 2s;

bool NobodyWatches(const CommandLine& line) {
  return line.QuitAfterSeconds.has_value() || QGuiApplication::platformName() == "offscreen";
}

}  // namespace

Program::Program(const CommandLine& line)
    : user_(NobodyWatches(line)),
      settingsFile_(SettingsFolder(demoFolder_, line.Demo), kLockTry),
      store_(settingsFile_, user_),
      times_(std::make_unique<StageTimes>()),
      pulse_(user_),
      demo_(
          clock_, [this] { return cycle_->ZeroFreqMHz(); }, kDemoSeed),
      hostServer_(user_, clock_) {
  store_.WriteInBackground([this] {
    QMetaObject::invokeMethod(
        &user_, [this] { store_.Collect(); }, Qt::QueuedConnection);
  });
  session_.SearchHost = line.Demo == DemoKind::None;
  // A newcomer has chosen nothing yet: show what the program is about.
  session_.FirstRun = settingsFile_.Stamp(std::string(kOwnApplication)) == 0;
  radios_ = std::make_unique<Radios>(KitParts{.Store = store_,
                                              .Settings = session_.Settings,
                                              .User = user_,
                                              .Pump = pump_,
                                              .Time = clock_,
                                              .Abandoned = [this] { return cycle_->StopRequested(); },
                                              .Unattended = NobodyWatches(line)});
  demoRadio_ = std::make_unique<DemoRadio>(line.Demo, radios_->Sources(), store_, user_);
  LoadIqFiles(line.IqFiles);
  std::vector<SoundInput*> inputs{&pulse_, &demo_};
  for (const auto& file : iqFiles_) inputs.push_back(file.get());
  devices_ = std::make_unique<DeviceList>(std::move(inputs), radios_->Sources());
  devices_->InitDevices();
  ChooseForThisRun(line);
  cycle_ = std::make_unique<RunCycle>(
      session_, RunParts{*devices_, display_, store_, user_, pump_, clock_, *times_, radios_->Router()});
  cat_ = std::make_unique<CatServing>(CatServing::Parts{session_, *cycle_, store_, clock_});
  window_ =
      std::make_unique<frmPan>(frmPan::Parts{session_, *devices_, store_, user_, display_, *cycle_, *times_,
                                             clock_, ports_, radios_->Router(), hostServer_, *cat_});
  remedies_ = std::make_unique<Remedies>(*window_, store_);
  firstSteps_ =
      std::make_unique<FirstSteps>(FirstSteps::Parts{session_, *devices_, store_, ports_, *window_});
  user_.CureWanted = [this](const Cure& cure) { remedies_->Take(cure); };
  hostServer_.Changed = [this] { window_->ShowLinks(); };
  window_->SettingsChosen = [this](const PanSettings& settings) {
    pulse_.SetRealTimePriority(settings.Priority);
    if (session_.SearchHost) hostServer_.Serve(HostTask(settings));
  };
}

Program::~Program() {
  hostServer_.Changed = nullptr;
  static_cast<void>(FinishSaving());
}

// A server of ours is for this machine alone.
std::optional<HostServerTask> Program::HostTask(const PanSettings& settings) {
  const SetupSection setup(store_);
  const RigctldEndpoint endpoint = HostEndpoint(store_);
  HostServerTask task{.Model = setup.Read(key::kRigModel),
                      .Device = setup.Read(key::kRigPort),
                      .Baud = setup.Read(key::kRigSpeed),
                      .Host = LoopbackOf(endpoint.Host),
                      .Port = endpoint.Port,
                      .Scope = RowOf(settings.Control).Way == CatWay::HostAndScope};
  if (task.Model == 0 || !IsThisMachine(endpoint.Host) || !UsesHost(settings.Control)) return std::nullopt;
  return task;
}

std::string Program::SettingsFolder(std::optional<DemoFolder>& demo, DemoKind kind) {
  return kind == DemoKind::None ? DefaultSettingsFolder() : demo.emplace().Path().toStdString();
}

std::string Program::FinishSaving() {
  // Whoever was told once that it does not work need not wait again.
  std::string unsaved = store_.Finish(gaveUp_ ? 0ms : kLastSaving);
  gaveUp_ = !unsaved.empty();
  return unsaved;
}

bool Program::FailedToRun() const {
  const RadioKit* source = cycle_->View().Way.Source;
  const bool missing = source != nullptr && times_->Lines == 0 && source->Health().State == LinkState::Lost;
  return cycle_->StartFailed() || missing;
}

bool Program::WantsFirstSteps(const CommandLine& line) const {
  return session_.FirstRun && line.Demo == DemoKind::None && line.IqFiles.isEmpty() && !line.Start &&
         !Unattended();
}

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
  const SourceList& sources = devices_->Sources();
  session_.ForcedSource = sources.First(SourceKind::Recording);
  if (!session_.ForcedSource && line.Demo == DemoKind::Iq)
    session_.ForcedSource = sources.First(SourceKind::Demo);
}

void Program::TellNoDevices() {
  if (Unattended())
    user_.ShowMessage("Ack!", kNoInputDevices, Severity::Critical, {.Text = kNoInputDevicesCure});
  else
    QMessageBox::critical(nullptr, "Ack!", QString("%1\n\n%2").arg(kNoInputDevices, kNoInputDevicesCure));
}

double Program::RunSeconds() const {
  return std::chrono::duration<double>(cycle_->TimeInRuns()).count();
}

}  // namespace spectrino
