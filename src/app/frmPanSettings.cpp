// What the main window loads and saves: settings, geometry, the chosen source.
#include <QGuiApplication>
#include <QScreen>

#include "app/Manual.h"
#include "app/frmPan.h"
#include "bandplan/Bands.h"
#include "settings/CatComposition.h"
#include "settings/Keys.h"
#include "settings/SetupSection.h"
#include "settings/ui/frmSetupPan.h"

namespace spectrino {
namespace {

// The set-up of another source may not reach this one's radio; setup's own rules settle it.
void ComposeCatControl(PanSettings& settings) {
  const SourceKind source = settings.Icom  ? SourceKind::Icom
                            : settings.K4  ? SourceKind::K4
                            : settings.K4D ? SourceKind::K4D
                                           : SourceKind::SoundCard;
  const IcomData icomData = settings.IcomControl == 1 ? IcomData::ViaHost : IcomData::SerialPort;
  const CatControl composed = ComposeCatControl(ChoiceOf(settings.Control), source, icomData);
  const bool serialIcom = source == SourceKind::Icom && icomData == IcomData::SerialPort;
  settings.Control =
      serialIcom ? CatControl::RadioDirect : CheckCompatible(composed, source, icomData).Control;
}

constexpr int kTwipsPerPixel = 15;
constexpr int kFirstRunWaterfall = 3;  // half the picture
}  // namespace

void frmPan::LoadWindow() {
  LoadStartup(SetupSection(parts_.Store), parts_.State.Settings);
  if (parts_.State.FirstRun) parts_.State.Settings.WaterfallSel = kFirstRunWaterfall;
  RestoreGeometry();
  LoadSettings();
  const PanSettings& settings = parts_.State.Settings;
  deck_->Calibration()->Show(settings.DeAmp, settings.DePhase, settings.BandLevelDb);
  header_->ShowOnTop(settings.OnTop);
  tuning_->AllowWheel(settings.Mouse);
  if (settings.OnTop) AlwaysOnTop(true);
}

void frmPan::LoadSettings() {
  PanSettings& settings = parts_.State.Settings;
  spectrino::LoadSettings(SetupSection(parts_.Store), parts_.Devices.SoundInputCount(), settings);
  if (!parts_.State.ForcedDeviceId.empty()) {
    settings.DeviceId = parts_.State.ForcedDeviceId;
    settings.Icom = settings.K4 = settings.K4D = false;
  }
  if (SettingsLoaded) SettingsLoaded(settings);
  parts_.Icom.SetAutoRef(settings.AutoRef);
  ShowDevices();
  ApplyDisplayOptions();
  ShowStrip();
  ShowHeader();
  ShowOverlays();
}

void frmPan::cmdSetup_Click() {
  if (rangeTimer_.isActive()) StoreRange();
  SetupWorld world{.Store = parts_.Store,
                   .Ports = &parts_.Ports,
                   .Running = parts_.Cycle.Running() || parts_.Cycle.Starting()};
  world.ListInputs = [this] {
    parts_.Devices.InitDevices();
    std::vector<SetupDevice> inputs;
    for (const DeviceList::Entry& entry : parts_.Devices.Entries())
      inputs.push_back({entry.Device.Name, entry.Device.StableId});
    return inputs;
  };
  world.OpenManual = OpenManual;
  if (parts_.User.Unattended()) {
    world.ShowMessage = [this](const QString& text) {
      parts_.User.ShowMessage("Spectrino", text.toStdString(), Severity::Information);
    };
    world.AskOkCancel = [show = world.ShowMessage](const QString& text) {
      show(text);
      return false;
    };
  }
  auto* dialog = new frmSetupPan(std::move(world), this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &frmSetupPan::BridgeWanted, this, &frmPan::BridgeWanted);
  // The input of a demo or a recording stays for this run unless another source was chosen.
  connect(dialog, &QDialog::finished, this, [this, dialog](int result) {
    if (result == QDialog::Accepted && dialog->SourceChanged()) parts_.State.ForcedDeviceId.clear();
    LoadSettings();
  });
  // Not exec: the run goes on behind it, and closing the window closes it.
  dialog->open();
}

void frmPan::RangeChanged() {
  const double mhz = parts_.State.Radio.MainFreqMHz;
  const std::optional<int> band = mhz != 0 ? RefBand(mhz) : std::nullopt;
  if (rangeTimer_.isActive() && band != rangeBand_) StoreRange();
  rangeBand_ = band;
  rangeTimer_.start();
}

void frmPan::StoreRange() {
  rangeTimer_.stop();
  SetupSection setup(parts_.Store);
  SaveRange(setup, parts_.State.Settings, rangeBand_);
}

void frmPan::ApplyDisplayOptions() {
  const PanSettings& settings = parts_.State.Settings;
  DisplayOptions options;
  options.Colours = settings.Colours;
  options.Fill = settings.Fill;
  options.SubD = settings.SubD;
  options.MHz = settings.MHz;
  options.WaterfallSel = settings.WaterfallSel;
  options.WFFollow = settings.WFFollow;
  parts_.Display.SetOptions(options);
  const std::uint32_t meter = settings.Colours[static_cast<std::size_t>(ColourIndex::SMeter)];
  header_->SetMeterColour(QColor(meter & 0xff, meter >> 8 & 0xff, meter >> 16 & 0xff));
  const std::uint32_t frequency = settings.Colours[static_cast<std::size_t>(ColourIndex::Frequency)];
  header_->SetFrequencyColour(QColor(frequency & 0xff, frequency >> 8 & 0xff, frequency >> 16 & 0xff));
  parts_.Cycle.UpdateScale();
  scope_->update();
}

void frmPan::ShowDevices() {
  deck_->ShowSource();
  const PanSettings& settings = parts_.State.Settings;
  QStringList names;
  for (const std::string& name : parts_.Devices.Names()) names.append(QString::fromStdString(name));
  const int inputs = parts_.Devices.SoundInputCount();
  int current = settings.Icom ? inputs : settings.K4 ? inputs + 1 : settings.K4D ? inputs + 2 : -1;
  if (current < 0) {
    const auto chosen = parts_.Devices.FindChosen(settings);
    if (chosen) {
      current = *chosen;
      parts_.State.Settings.SourceName =
          parts_.Devices.Entries()[static_cast<std::size_t>(*chosen)].Device.Name;
    } else {
      current = static_cast<int>(names.size());
      names.append(tr("%1 (missing)").arg(QString::fromStdString(settings.SourceName)));
    }
  }
  header_->ShowDevices(names, current);
}

void frmPan::DevicesBox_Click(int index) {
  const int inputs = parts_.Devices.SoundInputCount();
  if (parts_.Cycle.Running() || parts_.Cycle.Starting() || index < 0 || index >= inputs + 3) return;
  PanSettings& settings = parts_.State.Settings;
  settings.Device = index;
  settings.Icom = index == inputs;
  settings.K4 = index == inputs + 1;
  settings.K4D = index == inputs + 2;
  ComposeCatControl(settings);
  settings.SourceName = parts_.Devices.Names()[static_cast<std::size_t>(index)];
  settings.DeviceId =
      index < inputs ? parts_.Devices.Entries()[static_cast<std::size_t>(index)].Device.StableId : "";
  parts_.State.ForcedDeviceId.clear();
  SetupSection setup(parts_.Store);
  SaveSource(setup, settings);
  SetupBatch(setup).Put(key::kCatControl, static_cast<int>(settings.Control)).Save();
  ShowDevices();
  parts_.Cycle.UpdateScale();
  ShowOverlays();
  scope_->update();
}

void frmPan::RestoreGeometry() {
  const WindowGeometry stored = LoadGeometry(SetupSection(parts_.Store));
  QRect wanted(stored.Left / kTwipsPerPixel, stored.Top / kTwipsPerPixel, stored.Width / kTwipsPerPixel,
               stored.Height / kTwipsPerPixel);
  // A monitor that is gone, or an absurd size, must not leave the window where nobody can reach it.
  const QScreen* screen = QGuiApplication::screenAt(wanted.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect room = screen->availableGeometry();
  wanted.setSize(wanted.size().boundedTo(room.size()).expandedTo(minimumSize()));
  wanted.moveLeft(qBound(room.left(), wanted.left(), qMax(room.left(), room.right() - wanted.width() + 1)));
  wanted.moveTop(qBound(room.top(), wanted.top(), qMax(room.top(), room.bottom() - wanted.height() + 1)));
  resize(wanted.size());
  move(wanted.topLeft());
  if (stored.State == WindowState::Maximised) setWindowState(windowState() | Qt::WindowMaximized);
}

void frmPan::SaveWindow() {
  WindowGeometry geometry;
  const QRect place(pos(), size());
  geometry.Left = place.left() * kTwipsPerPixel;
  geometry.Top = place.top() * kTwipsPerPixel;
  geometry.Width = place.width() * kTwipsPerPixel;
  geometry.Height = place.height() * kTwipsPerPixel;
  // Full screen is a way of looking, not a size to come back to: like minimised, it stores no geometry.
  geometry.State = isMinimized() || isFullScreen() ? WindowState::Minimised
                   : isMaximized()                 ? WindowState::Maximised
                                                   : WindowState::Normal;
  SetupSection setup(parts_.Store);
  SaveGeometry(setup, geometry);
  const double mhz = parts_.State.Radio.MainFreqMHz;
  SaveMainKeys(setup, parts_.State.Settings, mhz != 0 ? RefBand(mhz) : std::nullopt);
}

}  // namespace spectrino
