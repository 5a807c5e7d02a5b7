#include "host/HostBackend.h"

#include <algorithm>
#include <utility>

#include "host/HostModes.h"
#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr auto kSearchTime = 1000ms;
constexpr auto kOwnServerTime = 3000ms;
constexpr auto kLook = 5ms;
constexpr auto kAgain = 100ms;
constexpr double kNarrowestHz = 50;
constexpr double kMostShiftHz = 1e6;  // no radio goes as far
constexpr std::string_view kPublisher = "Bexmora";

}  // namespace

RigctldEndpoint HostEndpoint(SettingsStore& store) {
  return HostEndpoint(store, SetupSection(store).Read(key::kHostEndpoint));
}

RigctldEndpoint HostEndpoint(SettingsStore& store, std::string_view text) {
  if (const auto own = ParseEndpoint(text)) return *own;
  return ParseEndpoint(store.GetSetting(kPublisher, kSetupSection, "AppPath", ""))
      .value_or(RigctldEndpoint{});
}

void HostBackend::Begin() {
  const PanSettings& settings = parts_.Settings;
  control_ = settings.Control;
  parts_.Ticking(true);
  pan_ = {};
  const bool mainOnly = RowOf(control_).Offset == OffsetRule::FixedCentre;
  const bool beside = settings.Source.Id.Kind == SourceKind::Icom && settings.IcomControl != 0;
  const HostReads reads = beside ? HostReads::Beside : mainOnly ? HostReads::MainOnly : HostReads::Everything;
  parts_.Radio.Open(HostEndpoint(parts_.Store), reads);
  read_.Reset();
  told_ = false;
}

void HostBackend::FollowLater() {
  Begin();
  parts_.Radio.SetHostFound(true);
}

bool HostBackend::Open() {
  Begin();
  HostRadio& radio = parts_.Radio;
  const RigctldClient& client = radio.Client();
  // A server of ours may be starting itself.
  const bool comes = SetupSection(parts_.Store).Read(key::kRigModel) > 0;
  const auto end = parts_.Time.Now() + (comes ? kOwnServerTime : kSearchTime);
  while (!client.IsReady() && (comes || !client.IsLost()) && parts_.Time.Now() < end) {
    if (parts_.Abandoned && parts_.Abandoned()) break;
    parts_.Pump.Wait(client.IsLost() ? kAgain : kLook);
    if (client.IsLost() && comes) Begin();
  }
  const bool found = client.IsReady() || (client.IsConnected() && !client.IsLost());
  if (!found) {
    Close();
    return false;
  }
  radio.SetHostFound(true);
  return true;
}

void HostBackend::Close() {
  parts_.Ticking(false);
  parts_.Radio.Close();
  parts_.Store.Withdraw(kPublisher, kPanSection);
  published_.clear();
  publishedSerial_ = 0;
  pan_ = {};
}

void HostBackend::Refresh(RadioState& radio) {
  const HostRadio& host = parts_.Radio;
  if (!host.HostFound()) return;
  const double mainMHz = host.HostGetFrequency(Vfo::A);
  told_ = told_ || mainMHz > 0;
  // Found again and not read yet: the plot stays where it was, and is known to be stale.
  if (mainMHz > 0 || !told_ || host.Client().Health().State == LinkState::Live) {
    radio.MainFreqMHz = mainMHz;
    radio.RadioMode = RadioModeOfHost(host.HostGetMode(Vfo::A));
  }
  radio.Transmitting = host.State().Transmitting;
  radio.Teletype = radio.SubTeletype = !host.State().DataFamily;
  if (RowOf(control_).Offset == OffsetRule::FixedCentre) {
    radio.SplitOn = 0;
    return;
  }
  Publish();
  if (read_.Take(parts_.Time.Now())) pan_ = ReadPan(parts_.Store, control_);
  radio.SubFreqMHz = pan_.SubFreqMHz != 0 ? pan_.SubFreqMHz : host.HostGetFrequency(Vfo::B);
  radio.SubRadioMode =
      pan_.SubMode != 0 ? RoundToInt16(pan_.SubMode) : RadioModeOfHost(host.HostGetMode(Vfo::B));
  radio.SplitOn = host.HostGetSplit();
  ClearEqualSplit(radio);
  TellFilters(pan_, radio);
}

// What the host does not tell stays to whoever else writes the section.
void HostBackend::Publish() {
  const HostRadio& host = parts_.Radio;
  const HostState& state = host.State();
  const double subMHz = host.HostGetFrequency(Vfo::B);
  const int hostMode = host.HostGetMode(Vfo::A);
  if (state.Serial == publishedSerial_ && subMHz == publishedSubMHz_ && hostMode == publishedMode_) return;
  publishedSerial_ = state.Serial;
  publishedSubMHz_ = subMHz;
  publishedMode_ = hostMode;

  std::vector<KeyValue> values;
  const auto put = [&values](const char* key, double value) { values.push_back({key, NumberText(value)}); };
  const HostVfo& a = state.Of(Vfo::A);
  const HostVfo& b = state.Of(Vfo::B);
  if (subMHz != 0) put("FB", subMHz * 1e6);
  if (hostMode != hostmode::kUnknown) put("MD", RadioModeOfHost(hostMode));
  if (b.Mode != hostmode::kUnknown) put("MD$", RadioModeOfHost(b.Mode));
  if (a.WidthHz > 0) put("FW", a.WidthHz);
  if (b.WidthHz > 0) put("FW$", b.WidthHz);
  if (state.PitchHz) put("PITCH", *state.PitchHz);
  if (state.PreampDb) put("PRE", *state.PreampDb);
  if (state.AttenuatorDb) put("ATT", *state.AttenuatorDb);
  if (state.IfShiftHz) {
    put("IFS", *state.IfShiftHz);
    put("IS", FilterCentreHz(RadioModeOfHost(hostMode), a.WidthHz, *state.IfShiftHz,
                             state.PitchHz.value_or(kUsualPitchHz)));
  }
  // Of Elecraft's data modes: 0 data, 2 the radio's own teletype.
  if (a.Mode == hostmode::kFsk || a.Mode == hostmode::kFskReverse) put("DT", state.DataFamily ? 0 : 2);
  put("SB", host.HostGetSubRx());
  // What the radio behind the host no longer tells is not known of it; another one may be there now.
  const auto stays = [&](const KeyValue& old) {
    return std::ranges::any_of(values, [&](const KeyValue& value) { return value.Key == old.Key; });
  };
  if (!std::ranges::all_of(published_, stays)) {
    parts_.Store.Withdraw(kPublisher, kPanSection);
    published_.clear();
    read_.Reset();
  }
  for (const KeyValue& value : values) {
    const auto same = [&](const KeyValue& old) { return old.Key == value.Key && old.Value == value.Value; };
    if (std::ranges::any_of(published_, same)) continue;
    parts_.Store.Publish(kPublisher, kPanSection, value.Key, value.Value);
    read_.Reset();
  }
  published_ = std::move(values);
}

void HostBackend::SetFrequency(Vfo vfo, double freqMHz, Aim aim) {
  if (aim == Aim::Signal)
    freqMHz = CorrectedForTones(pan_, RadioModeOfHost(parts_.Radio.HostGetMode(vfo)), freqMHz);
  parts_.Radio.HostSetFrequency(freqMHz, vfo);
}

bool HostBackend::SelectMode(const ModeRequest& request) {
  parts_.Radio.HostSetMode(HostModeOfButton(request.Button, request.Reverse));
  return true;
}

bool HostBackend::SetMode(Vfo receiver, const ExactMode& exact) {
  const int hostMode = HostModeOfRadio(exact.RadioMode);
  if (receiver != Vfo::A || hostMode == hostmode::kUnknown) return false;
  const bool data = exact.RadioMode == mode::kData || exact.RadioMode == mode::kDataReverse;
  parts_.Radio.HostSetMode(hostMode, data ? !exact.Teletype : parts_.Radio.State().DataFamily);
  return true;
}

bool HostBackend::SetSplit(bool on) {
  parts_.Radio.HostSetSplit(on);
  return true;
}

bool HostBackend::Transmit(bool on) {
  parts_.Radio.HostTransmit(on);
  return true;
}

// The radio says which kind it takes, not the text. Before the host told of its radio nobody knows.
void HostBackend::SendMacro(std::string_view text) {
  HostRadio& radio = parts_.Radio;
  if (radio.HostFound() && !radio.Client().IsReady())
    return parts_.User.ShowStatus("Not sent: Castelon has not told yet which radio it has.");
  radio.HostSendCommand(radio.State().SpeaksCiv ? HostCommandKind::CivHex : HostCommandKind::Text, text);
}

FilterReach HostBackend::FilterReachOf(Vfo receiver) const {
  const HostRadio& host = parts_.Radio;
  const bool main = receiver == Vfo::A;
  // The shade in the plot is made of what is published.
  if (RowOf(control_).Offset == OffsetRule::FixedCentre || !((main ? pan_.WidthHz : pan_.SubWidthHz) > 0))
    return {};
  const int radioMode = RadioModeOfHost(host.HostGetMode(receiver));
  const bool shifts = main && radioMode != mode::kAm && radioMode != mode::kFm;
  return {
      .Width = host.SetsWidth(receiver),
      .Shift = shifts && host.HostFound() && host.State().SetsIfShift && host.State().IfShiftHz.has_value()};
}

void HostBackend::ChangeBandwidth(Vfo receiver, int deltaHz) {
  if (!FilterReachOf(receiver).Width) return;
  const double wantedHz = ownWidth_[receiver == Vfo::A ? 0 : 1].Step(
      parts_.Radio.State().Of(receiver).WidthHz, deltaHz, kNarrowestHz, parts_.Time.Now());
  parts_.Radio.HostSetWidth(wantedHz, receiver);
}

void HostBackend::ShiftPassband(Vfo receiver, int deltaHz) {
  if (!FilterReachOf(receiver).Shift) return;
  const double toldHz = parts_.Radio.State().IfShiftHz.value_or(0);
  parts_.Radio.HostSetIfShift(ownShift_.Step(toldHz, deltaHz, -kMostShiftHz, parts_.Time.Now()));
}

}  // namespace spectrino
