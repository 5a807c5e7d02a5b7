#include "app/DemoRadio.h"

#include "settings/Keys.h"
#include "settings/SerialAlias.h"
#include "settings/SetupSection.h"
#include "state/CatControl.h"

namespace spectrino {
namespace {

constexpr int kIcomMs = 3;

SetupBatch& Choose(SetupBatch& batch, SourceKind chosen, std::span<const RadioSource> radios) {
  PutRadioFlags(batch, {chosen}, radios);
  return batch.Put(key::kCatControl, static_cast<int>(CatControl::RadioDirect));
}

}  // namespace

DemoRadio::DemoRadio(DemoKind demo, std::span<const RadioSource> radios, SettingsStore& store, Notifier& user)
    : radios_(radios) {
  if (demo == DemoKind::K4 || demo == DemoKind::K4D) StartK4(demo == DemoKind::K4D, store, user);
  if (demo == DemoKind::Icom) StartIcom(store, user);
}

// It answers on ports of its own.
void DemoRadio::StartK4(bool isK4D, SettingsStore& store, Notifier& user) {
  k4_ = std::make_unique<K4SimServer>(K4SimServer::Options{
      .IsK4D = isK4D, .RateHz = 24, .CatPort = 0, .PanPort = 0, .Operator = false, .Faults = {}});
  if (!k4_->Start()) {
    user.ShowMessage("Spectrino", "The simulated K4 found no free port on this machine.", Severity::Critical,
                     Cure::UseDemo("The demo band needs none."));
    return;
  }
  SetupSection setup(store);
  SetupBatch batch(setup);
  Choose(batch, isK4D ? SourceKind::K4D : SourceKind::K4, radios_)
      .Put(key::kK4Address, "127.0.0.1")
      .Put(key::kK4CatPort, k4_->CatPort())
      .Put(key::kK4PanPort, k4_->PanPort())
      .Save();
}

// It sits behind a pseudo-terminal, opened as a real radio's port is.
void DemoRadio::StartIcom(SettingsStore& store, Notifier& user) {
  icom_ = std::make_unique<IcomSimPort>(IcomSimSetup{}, "", std::chrono::steady_clock::now());
  std::string reason;
  if (!icom_->Open(reason)) {
    user.ShowMessage("Spectrino", "The simulated Icom found no terminal: " + reason, Severity::Critical,
                     Cure::UseDemo("The demo band needs none."));
    return;
  }
  QObject::connect(&tmrIcom_, &QTimer::timeout, &tmrIcom_,
                   [this] { icom_->Process(std::chrono::steady_clock::now()); });
  tmrIcom_.setTimerType(Qt::PreciseTimer);
  tmrIcom_.start(kIcomMs);
  SetupSection setup(store);
  SetupBatch batch(setup);
  Choose(batch, SourceKind::Icom, radios_).Put(key::kPort, 1).Put(key::kIcAddress, "94").Save();
  SaveSerialAlias(store, 1, icom_->TerminalPath());
}

}  // namespace spectrino
