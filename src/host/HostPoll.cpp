#include "host/HostPoll.h"

#include <algorithm>
#include <string_view>

#include "host/HostModes.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

/// "+6 dB" of "6", and of "Func status: 1" the 1: levels come bare, states behind a label.
double NumberIn(const RigctldReply& reply) {
  if (reply.Lines.empty()) return 0;
  const std::string_view line = reply.Lines.back();
  const std::size_t colon = line.rfind(':');
  return Val(Trim(colon == std::string_view::npos ? line : line.substr(colon + 1)));
}

// Freq: Hz | Mode: word | Width: Hz | Split: 0 or 1 | SatMode
template <Vfo Which>
void StoreVfo(const RigctldReply& reply, HostState& state) {
  HostVfo& vfo = state.Of(Which);
  if (const auto freq = reply.Value("Freq"); freq && Val(*freq) > 0) vfo.FreqHz = Val(*freq);
  if (const auto word = reply.Value("Mode")) {
    vfo.Mode = HostModeOfWord(*word);
    vfo.ModeWord = *word;
    const bool shared = vfo.Mode == hostmode::kFsk || vfo.Mode == hostmode::kFskReverse;
    if (Which == Vfo::A && shared) state.DataFamily = IsDataWord(*word);
  }
  if (const auto width = reply.Value("Width")) vfo.WidthHz = std::max(0.0, Val(*width));
  if (const auto split = reply.Value("Split")) state.Split = RoundToInt16(Val(*split));
}

template <auto Field>
void StoreLevel(const RigctldReply& reply, HostState& state) {
  state.*Field = NumberIn(reply);
}

void StorePtt(const RigctldReply& reply, HostState& state) {
  state.Transmitting = NumberIn(reply) > 0;
}

void StoreSubRx(const RigctldReply& reply, HostState& state) {
  state.SubRx = NumberIn(reply) > 0 ? 1 : 0;
}

struct ReadRow {
  std::string_view Command;
  std::string_view Argument;
  bool TakesVfo;                       ///< before the argument, where the server wants one
  std::string_view Caps;               ///< the line of the radio's abilities that names it
  std::string_view Ability;            ///< what stands in that line
  std::chrono::milliseconds Interval;  ///< at most so often
  void (*Store)(const RigctldReply&, HostState&);
};

constexpr std::size_t kMain = 0;
constexpr std::size_t kSub = 1;
constexpr std::size_t kSubRx = 3;
constexpr std::size_t kIfShift = 7;

// VFO B of a radio that cannot address it would be read by switching over to it: nobody wants to hear that.
constexpr auto kReads = std::to_array<ReadRow>({
    {"get_vfo_info", "VFOA", false, "", "", 0ms, &StoreVfo<Vfo::A>},
    {"get_vfo_info", "VFOB", false, "Has targetable VFO", "Y", 250ms, &StoreVfo<Vfo::B>},
    {"get_ptt", "", true, "Can get PTT", "Y", 300ms, &StorePtt},
    {"get_func", "DUAL_WATCH", true, "Get functions", "DUAL_WATCH", 2000ms, &StoreSubRx},
    {"get_level", "PREAMP", true, "Get level", "PREAMP(", 2000ms, &StoreLevel<&HostState::PreampDb>},
    {"get_level", "ATT", true, "Get level", "ATT(", 2000ms, &StoreLevel<&HostState::AttenuatorDb>},
    {"get_level", "CWPITCH", true, "Get level", "CWPITCH(", 2000ms, &StoreLevel<&HostState::PitchHz>},
    {"get_level", "IF", true, "Get level", "IF(", 1000ms, &StoreLevel<&HostState::IfShiftHz>},
});

/// Whether ability stands as a word of its own in the caps line: "ATT(" is not in "SWATT(".
bool Names(std::string_view line, std::string_view ability) {
  for (std::size_t at = line.find(ability); at != std::string_view::npos; at = line.find(ability, at + 1))
    if (at == 0 || line[at - 1] == ' ' || line[at - 1] == '\t') return true;
  return false;
}

}  // namespace

void HostPoll::Begin(HostReads reads, const RigctldReply& caps) {
  static_assert(kReads.size() == kItems && kReads[kIfShift].Argument == "IF");
  reads_ = reads;
  asked_.reset();
  soon_.reset();
  sentAt_ = {};
  next_ = clock_.Now();
  last_ = kSub;
  // It may be another radio, or have been tuned by others meanwhile.
  const std::uint64_t serial = state_.Serial;
  state_ = {};
  state_.Serial = serial;
  for (std::size_t item = 0; item < kItems; ++item) {
    const ReadRow& row = kReads[item];
    asked_[item] = item == kMain ||
                   (reads != HostReads::MainOnly && Names(caps.Value(row.Caps).value_or(""), row.Ability));
  }
  if (reads == HostReads::Beside) asked_[kSub] = asked_[kSubRx] = false;
  state_.Model = caps.Value("Model name").value_or("");
  state_.ModelNumber = RoundToInt32(Val(caps.Value("Caps dump for model").value_or("0")));
  state_.SetsMode = caps.Value("Can set Mode") == "Y";
  state_.SetsIfShift = Names(caps.Value("Set level").value_or(""), "IF(");
  state_.SpeaksCiv = caps.Value("Mfg name") == "Icom";
  ++state_.Serial;
}

void HostPoll::Tick() {
  if (!client_.ReadsIdle() || clock_.Now() < std::max(next_, rested_)) return;
  Send(NextItem());
}

void HostPoll::ReadSoon(Vfo vfo) {
  const std::size_t item = vfo == Vfo::A ? kMain : kSub;
  soon_[item] = asked_[item];
  next_ = std::min(next_, clock_.Now());
}

void HostPoll::ReadShiftSoon() {
  soon_[kIfShift] = asked_[kIfShift];
}

void HostPoll::Rest(std::chrono::milliseconds time) {
  rested_ = clock_.Now() + time;
}

// The main VFO every second time at least: its dial is what the eye is on.
std::size_t HostPoll::NextItem() const {
  for (std::size_t item = 0; item < kItems; ++item)
    if (soon_[item]) return item;
  if (last_ != kMain) return kMain;
  const auto now = clock_.Now();
  std::size_t next = kMain;
  const int slower = reads_ == HostReads::Beside ? kBesideSlower : 1;
  for (std::size_t item = kMain + 1; item < kItems; ++item) {
    if (!asked_[item] || now - sentAt_[item] < slower * kReads[item].Interval) continue;
    if (next == kMain || sentAt_[item] < sentAt_[next]) next = item;
  }
  return next;
}

void HostPoll::Send(std::size_t item) {
  const ReadRow& row = kReads[item];
  soon_[item] = false;
  last_ = item;
  sentAt_[item] = clock_.Now();
  const std::uint64_t read = ++readsSent_;
  client_.Read({.Command = row.Command,
                .Arguments = std::string(row.Argument),
                .Of = row.TakesVfo ? std::optional(Vfo::A) : std::nullopt,
                .Done = [this, item, read](const RigctldReply* reply) { Answered(item, read, reply); },
                .Slot = {}});
}

void HostPoll::Answered(std::size_t item, std::uint64_t read, const RigctldReply* reply) {
  if (reply == nullptr) return;
  const auto now = clock_.Now();
  const auto took = std::chrono::ceil<std::chrono::milliseconds>(now - sentAt_[item]);
  next_ = now + std::clamp(took, reads_ == HostReads::Beside ? kBesidePause : kLeastPause, kMostPause);
  if (reply->Code == rprt::kDone) {
    const HostState before = state_;
    kReads[item].Store(*reply, state_);
    if (state_ != before) ++state_.Serial;
    if (item == kMain) state_.Of(Vfo::A).Read = read;
    if (item == kSub) state_.Of(Vfo::B).Read = read;
  } else if (rprt::RadioIsSilent(reply->Code)) {
    next_ = now + kSilentPause;
  } else if (item != kMain && rprt::NeverWorks(reply->Code)) {
    asked_[item] = false;
  }
}

}  // namespace spectrino
