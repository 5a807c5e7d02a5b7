#include "k4/ui/K4Kit.h"

#include <QGuiApplication>

#include "k4/CatParser.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {
constexpr auto kAskAgain = 500ms;
}  // namespace

K4Kit::K4Kit(const KitParts& parts, std::unique_ptr<ByteSocket> cat, std::unique_ptr<ByteSocket> pan)
    : time_(parts.Time),
      WSCat_(std::move(cat)),
      WSPan_(std::move(pan)),
      panel_(std::make_unique<K4Panel>()),
      bands_(LoadBandMemory(parts.Store)),
      retry_([this] { return panel_->window(); }, parts.Unattended),
      session_({.State = state_,
                .WSCat = *WSCat_,
                .WSPan = *WSPan_,
                .Store = parts.Store,
                .View = *this,
                .Retry = retry_,
                .User = parts.User,
                .Pump = parts.Pump,
                .Time = parts.Time,
                .ParseReplies = [this](std::string& buffer) { ParseK4Replies(buffer, state_, *panel_); },
                .SelectMonitor = [this](int which) { commands_.SelectMonitor(which); },
                .Abandoned = parts.Abandoned}),
      dial_(session_, parts.Time),
      commands_(state_, session_, dial_, *panel_, parts.Store, parts.Pump),
      link_(state_, session_, status_, parts.User, parts.Time),
      backend_(state_, session_, dial_, commands_, parts.Store, bands_, parts.Time),
      askAgain_(kAskAgain) {
  panel_->hide();
  ConnectPanel();
  tmrK4_.setInterval(K4Session::kTimerInterval);
  QObject::connect(&tmrK4_, &QTimer::timeout, &tmrK4_, [this] {
    session_.tmrK4_Timer();
    dial_.Pump();  // where another way tells the frequency no pass does it
  });
  tmrK4_.start();
}

K4Kit::~K4Kit() = default;

const RadioTraits& K4Kit::Traits() const {
  static const RadioTraits traits{.Deck = {BandLayout::With60m, ModeLayout::WithReverse},
                                  .MacroSection = "MacrosK4",
                                  .OwnSpan = true,
                                  .StepText = "50kHz",
                                  .StepMHz = 0.05};
  return traits;
}

std::span<const RadioSource> K4Kit::Sources() const {
  static constexpr RadioSource sources[] = {{SourceKind::K4, "K4"}, {SourceKind::K4D, "K4D"}};
  return sources;
}

int K4Kit::AddressedMode(const RadioState& radio) const {
  return state_.RxSuffix == "$" ? state_.SubRadioMode : radio.RadioMode;
}

void K4Kit::ConnectPanel() {
  K4Panel* panel = panel_.get();
  QObject::connect(panel, &K4Panel::Clicked, panel,
                   [this](const QString& name) { commands_.Click(name.toStdString()); });
  QObject::connect(panel, &K4Panel::Toggled, panel,
                   [this](const QString& name, bool on) { Toggle(name, on); });
  QObject::connect(panel, &K4Panel::optK4Span_Click, panel,
                   [this](int index) { commands_.optK4Span_Click(index); });
  QObject::connect(panel, &K4Panel::SliderMoved, panel, [this](const QString& name, int value) {
    if (name == "sldNotch")
      commands_.sldNotch_Change(value);
    else
      commands_.sldVol_Change(name == "sldVol1" ? 1 : 2, value);
  });
  QObject::connect(panel, &K4Panel::SliderCommitted, panel, [this](const QString& name) {
    if (name == "sldNotch")
      commands_.sldNotch_Commit();
    else
      commands_.sldVol_Commit(name == "sldVol1" ? 1 : 2);
  });
}

StatusArea K4Kit::Status() {
  StatusArea area = status_.Area(state_, session_.CatHealth().State == LinkState::Live);
  if (area.Shown && area.NeedsDualPanOff && askAgain_.Take(time_.Now())) session_.SendK4("SB;");
  return area;
}

void K4Kit::Toggle(const QString& check, bool on) {
  const struct {
    const char* Name;
    void (K4Commands::*Handler)(bool);
  } handlers[] = {{"chkSplt", &K4Commands::chkSplt_Click},      {"chkBSET", &K4Commands::chkBSET_Click},
                  {"chkSub", &K4Commands::chkSub_Click},        {"chkDIV", &K4Commands::chkDIV_Click},
                  {"chkIIR", &K4Commands::chkIIR_Click},        {"chkFXT", &K4Commands::chkFXT_Click},
                  {"chkMinipan", &K4Commands::chkMinipan_Click}};
  for (const auto& handler : handlers) {
    if (check == handler.Name) (commands_.*handler.Handler)(on);
  }
}

void K4Kit::ShowWaiting(bool waiting) {
  if (waiting)
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QGuiApplication::restoreOverrideCursor();
}

void K4Kit::AllowAlwaysOnTop(bool allow) {
  if (window_ != nullptr) window_->AllowOnTop(allow);
}

}  // namespace spectrino
