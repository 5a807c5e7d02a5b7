#include "app/K4Rig.h"

#include <QGuiApplication>

#include "k4/CatParser.h"

namespace spectrino {

namespace {
constexpr int kAskAgainMs = 500;
}

K4Rig::K4Rig(const Parts& parts)
    : retry_([this] { return window_; }, parts.Unattended),
      session_({.State = state_,
                .WSCat = WSCat_,
                .WSPan = WSPan_,
                .Store = parts.Store,
                .View = *this,
                .Retry = retry_,
                .User = parts.User,
                .Pump = parts.Pump,
                .Time = parts.Time,
                .ParseReplies = [this](std::string& buffer) { ParseK4Replies(buffer, state_, *this); },
                .SelectMonitor = [this](int which) { commands_.SelectMonitor(which); },
                .Abandoned = parts.Abandoned}),
      commands_(state_, session_, *this, parts.Store, parts.Pump),
      link_(state_, session_, parts.User, parts.Time),
      backend_(state_, session_, commands_, parts.Store, parts.Bands, parts.Time) {
  tmrK4_.setInterval(K4Session::kTimerInterval);
  QObject::connect(&tmrK4_, &QTimer::timeout, [this] { session_.tmrK4_Timer(); });
  tmrK4_.start();
}

void K4Rig::Attach(K4Panel* panel, QWidget* window, std::function<void(bool)> allowOnTop) {
  panel_ = panel;
  window_ = window;
  allowOnTop_ = std::move(allowOnTop);
  QObject::connect(panel, &K4Panel::Clicked, window,
                   [this](const QString& name) { commands_.Click(name.toStdString()); });
  QObject::connect(panel, &K4Panel::Toggled, window,
                   [this](const QString& name, bool on) { Toggle(name, on); });
  QObject::connect(panel, &K4Panel::optK4Span_Click, window,
                   [this](int index) { commands_.optK4Span_Click(index); });
  QObject::connect(panel, &K4Panel::SliderMoved, window, [this](const QString& name, int value) {
    if (name == "sldNotch")
      commands_.sldNotch_Change(value);
    else
      commands_.sldVol_Change(name == "sldVol1" ? 1 : 2, value);
  });
  QObject::connect(panel, &K4Panel::SliderCommitted, window, [this](const QString& name) {
    if (name == "sldNotch")
      commands_.sldNotch_Commit();
    else
      commands_.sldVol_Commit(name == "sldVol1" ? 1 : 2);
  });
}

StatusArea K4Rig::Status() {
  StatusArea area = status_.Area(state_);
  if (area.Shown && area.NeedsDualPanOff && (!sinceAsked_.isValid() || sinceAsked_.elapsed() > kAskAgainMs)) {
    sinceAsked_.start();
    session_.SendK4("SB;");
  }
  return area;
}

void K4Rig::Toggle(const QString& check, bool on) {
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

void K4Rig::Set(const char* check, bool ticked) {
  if (panel_ != nullptr) panel_->SetCheck(check, ticked);
}

void K4Rig::SelectSpanPreset(int index) {
  if (panel_ != nullptr) panel_->SelectSpanPreset(index);
}

bool K4Rig::SubTicked() const {
  return panel_ != nullptr && panel_->IsChecked("chkSub");
}

void K4Rig::ShowWaiting(bool waiting) {
  if (waiting)
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QGuiApplication::restoreOverrideCursor();
}

void K4Rig::AllowAlwaysOnTop(bool allow) {
  if (allowOnTop_) allowOnTop_(allow);
}

void K4Rig::SetCheck(K4Check check, bool ticked) {
  constexpr const char* kNames[] = {"chkSplt", "chkBSET", "chkSub", "chkDIV", "chkIIR", "chkFXT"};
  Set(kNames[static_cast<int>(check)], ticked);
}

void K4Rig::SetFilterCaption(int receiver, const std::string& caption) {
  if (panel_ != nullptr) panel_->SetFilterCaption(receiver, QString::fromStdString(caption));
}

void K4Rig::SetVolume(int index, int value) {
  if (panel_ != nullptr) panel_->SetVolume(index, value);
}

void K4Rig::SetVolumeToolTip(const std::string& text) {
  if (panel_ != nullptr) panel_->SetVolumeToolTip(QString::fromStdString(text));
}

int K4Rig::Notch() const {
  return panel_ != nullptr ? panel_->Notch() : 0;
}

void K4Rig::SetNotch(int value) {
  if (panel_ != nullptr) panel_->SetNotch(value);
}

void K4Rig::SetNotchToolTip(const std::string& text) {
  if (panel_ != nullptr) panel_->SetNotchToolTip(QString::fromStdString(text));
}

}  // namespace spectrino
