#include "app/FirstSteps.h"

#include <algorithm>

#include "settings/ui/frmFirstSteps.h"

namespace spectrino {

FirstSteps::FirstSteps(const Parts& parts) : parts_(parts) {
  QObject::connect(&parts.Window, &frmPan::FirstStepsWanted, &parts.Window, [this] { Open(); });
}

void FirstSteps::Open() {
  if (auto* open = parts_.Window.findChild<frmFirstSteps*>()) {
    open->activateWindow();
    return;
  }
  parts_.Devices.InitDevices();
  const SourceList& sources = parts_.Devices.Sources();
  const auto demo = sources.First(SourceKind::Demo);
  const bool newcomer = parts_.State.FirstRun && demo.has_value();
  FirstStepsWorld world{.Store = parts_.Store, .Sources = sources, .Ports = &parts_.Ports};
  world.Current = sources.Find(newcomer ? *demo : parts_.State.Settings.Source).value_or(0);
  world.Levels = [this] {
    std::map<std::string, setup::InputLevel> levels;
    for (const InputReading& reading : levels_.Read())
      levels[reading.StableId] = {reading.Heard, reading.LeftDb, reading.RightDb,
                                  QString::fromStdString(reading.Trouble)};
    return levels;
  };
  std::vector<DeviceList::Entry> inputs;
  std::ranges::copy_if(
      parts_.Devices.Entries(), std::back_inserter(inputs),
      [](const DeviceList::Entry& entry) { return entry.Device.Kind == SourceKind::SoundInput; });
  levels_.Begin(std::move(inputs));
  auto* page = new frmFirstSteps(std::move(world), &parts_.Window);
  page->setAttribute(Qt::WA_DeleteOnClose);
  frmPan* window = &parts_.Window;
  // The inputs are free again before one of them is started.
  QObject::connect(page, &QDialog::finished, window, [this] { levels_.End(); });
  QObject::connect(page, &frmFirstSteps::StartWanted, window,
                   [window](int index) { window->Change().StartWith(index); });
  QObject::connect(page, &frmFirstSteps::SetupWanted, window, &frmPan::cmdSetup_Click);
  page->open();
}

}  // namespace spectrino
