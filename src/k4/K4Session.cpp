#include "k4/K4Session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "k4/PanStream.h"
#include "settings/Keys.h"
#include "settings/SetupSection.h"
#include "state/Val.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

/// No reply is as long: what has no ";" within this is not a K4's.
constexpr std::size_t kMostTextBytes = 64 * 1024;

// "AI5;" makes the radio tell changes by itself; the rest asks for what the panel shows.
constexpr auto kRefresh = std::to_array<std::string_view>(
    {"AI5;", "K41;", "TM1;", "#SCL;", "#SPN;", "MD$;",  "#REF;", "#SCL;",   "#FXT;", "ME0102;",
     "FA;",  "FB;",  "MD;",  "FT;",   "AG;",   "AG$;",  "BL;",   "BW;",     "BW$;",  "IS;",
     "IS$;", "CW;",  "DV;",  "SB;",   "DT;",   "DT$;",  "NM;",   "NM$;",    "NA;",   "NA$;",
     "RT;",  "XT;",  "FP;",  "FP$;",  "SMH;",  "SMH$;", "AP;",   "AP$;",    "GT;",   "GT$;",
     "NR;",  "NR$;", "NB;",  "NB$;",  "AN;",   "PA$;",  "PA;",   "RA$;",    "RA;",   "VX;",
     "RO;",  "BS;",  "AR;",  "AR$;",  "TS;",   "AT;",   "#MP$;", "ME0070;", "#DPM;", "#HDPM;"});
constexpr auto kPollBefore =
    std::to_array<std::string_view>({"#SCL;", "#SPN;", "#REF;", "#SCL;", "#FXT;", "TQX;"});
constexpr auto kPollAfter = std::to_array<std::string_view>({"SMH;", "SMH$;", "#HDPM;", "#DPM;"});

}  // namespace

K4Session::K4Session(K4SessionParts parts)
    : parts_(std::move(parts)),
      connector_(
          parts_, [this] { CloseSockets(); }, [this] { return cat_.Why.empty() ? pan_.Why : cat_.Why; }),
      assembler_([this](std::span<const std::uint8_t> frames) {
        const std::uint64_t before = parts_.State.K4PanChannels[kPanMain].Serial;
        ParseK4PanFrames(frames, parts_.State);
        if (parts_.State.K4PanChannels[kPanMain].Serial != before) lineArrived_ = parts_.Time.Now();
      }),
      cat_{parts_.WSCat, "CAT", &K4Target::CatPort, LinkWatch(parts_.Time)},
      pan_{parts_.WSPan, "panadapter", &K4Target::PanPort, LinkWatch(parts_.Time)} {
  for (Port* port : {&cat_, &pan_}) {
    port->Socket.Connected = [this, port] { PortConnected(*port); };
    port->Socket.Closed = [this, port] { PortEnded(*port, "closed by the radio"); };
    port->Socket.Error = [this, port](std::string_view text) { PortEnded(*port, text); };
  }
  parts_.WSCat.DataArrival = [this](std::span<const std::uint8_t> bytes) { CatArrived(bytes); };
  parts_.WSPan.DataArrival = [this](std::span<const std::uint8_t> bytes) { PanArrived(bytes); };
}

K4Session::~K4Session() {
  for (ByteSocket* socket : {&parts_.WSCat, &parts_.WSPan}) {
    socket->Connected = nullptr;
    socket->Closed = nullptr;
    socket->Error = nullptr;
    socket->DataArrival = nullptr;
    socket->Close();
  }
}

K4ConnectOutcome K4Session::Start() {
  K4State& state = parts_.State;
  MonitorSelected_ = false;
  state.SubRxOn = -1;
  state.K4MonitorKind = -1;
  state.PanHdpm = 0;
  state.MinipanOn = true;
  parts_.View.TickMinipan();
  state.K4Active = true;
  state.K4SpanPreset = 1;
  parts_.View.SelectSpanPreset(1);
  K4ConnectOutcome outcome = TCPConnect();
  if (outcome.Failed) {
    state.K4Active = false;
    return outcome;
  }
  // Again: what the radio missed while it was still being set up is asked for a second time.
  if (cat_.Opened) RefreshK4();
  BeginWatch();
  timerEnabled_ = true;
  state.K4PanDataSeen = false;
  state.RxSuffix.clear();
  state.BsetOn = 0;  // as shown: an answer that differs moves the control again
  parts_.View.ClearBset();
  return outcome;
}

void K4Session::Stop() {
  if (stopping_) return;
  stopping_ = true;
  timerEnabled_ = false;
  if (parts_.State.K4Connected && parts_.SelectMonitor) parts_.SelectMonitor(0);
  CloseSockets();
  parts_.State.K4PanDataSeen = false;
  parts_.State.K4Active = false;
  stopping_ = false;
}

K4ConnectOutcome K4Session::TCPConnect() {
  K4ConnectOutcome outcome = connector_.Connect(target_);
  if (outcome.Failed) return outcome;
  SendOpening();
  // Both may be gone again by now: who does not try anew has nothing to run on.
  if (parts_.State.K4Connected || SetupSection(parts_.Store).Read(key::kReconnect)) return outcome;
  parts_.User.ShowStatus("");
  return connector_.GiveUp(target_);
}

void K4Session::SendOpening() {
  parts_.User.ShowStatus("Connected to " + target_.Address + ":" + std::to_string(target_.CatPort) + "/" +
                         std::to_string(target_.PanPort));
  parts_.Pump.Wait(250ms);
  parts_.Pump.Wait(250ms);
  // It was there long enough to be read. One connection is enough to be connected, but not to work.
  const Port& other = cat_.Connected ? pan_ : cat_;
  const std::string trouble = other.Why.empty() ? " does not answer" : ": " + other.Why;
  parts_.User.ShowStatus(cat_.Connected == pan_.Connected ? "" : "The K4's " + PortText(other) + trouble);
  // A port that connects from here on gets its opening when the watch begins.
  for (Port* port : {&cat_, &pan_}) port->Opened = port->Connected;
  SendPan("PING");
  SendCatOpening();
  // The reply to "ME0005;" decides whether there is a sub mini-pan.
  parts_.Pump.Wait(30ms);
  if (pan_.Opened) SendPanOpening();
  if (parts_.State.SubRxOn == 1 || parts_.View.SubTicked()) SendK4("#HDPM1;");
  parts_.Pump.Wait(30ms);
}

void K4Session::SendCatOpening() {
  SendCat("ID;");
  SendCat("ME0005;");
  RefreshK4();
}

void K4Session::SendPanOpening() {
  SendPan("A1");
  SendPan("B0");
  SendPan("Y1");
  SendPan(parts_.State.IsK4D ? "Z1" : "Z0");
}

void K4Session::CloseSockets() {
  for (Port* port : {&pan_, &cat_}) {
    port->Socket.Close();
    port->Watch.End();
    port->Connected = port->Opened = port->Told = false;
    port->Why.clear();
  }
  parts_.State.K4Connected = false;
  // Halves of a reply or a frame do not continue in another connection.
  K4RxBuffer_.clear();
  assembler_.Reset();
}

/// From now on a connection that comes late, or ends, is this session's own business.
void K4Session::BeginWatch() {
  const bool again = SetupSection(parts_.Store).Read(key::kReconnect);
  for (Port* port : {&cat_, &pan_}) {
    port->Watch.TryAgain(again);
    port->Watch.Begin();
    if (!port->Connected)
      port->Watch.Lost(port->Why.empty() ? "no answer" : port->Why);
    else if (!port->Opened)
      OpenPort(*port);
  }
}

LinkHealth K4Session::Health() const {
  if (!parts_.State.K4Active) return {};
  const LinkState cat = cat_.Watch.Health().State;
  const LinkState pan = pan_.Watch.Health().State;
  if (cat == pan) return BothPorts();
  const Port& worse = cat > pan ? cat_ : pan_;
  LinkHealth health = worse.Watch.Health();
  if (health.State == LinkState::Lost) health.Why = "The K4's " + PortText(worse) + ": " + health.Why;
  if (health.State == LinkState::Silent && std::min(cat, pan) == LinkState::Live)
    health.Why = "its " + PortText(worse) +
                 " sends nothing, the other one does. Press Stop, then Start to open it anew.";
  return health;
}

LinkHealth K4Session::BothPorts() const {
  const LinkHealth cat = cat_.Watch.Health();
  LinkHealth health = pan_.Watch.Health();
  health.Since = std::max(health.Since, cat.Since);
  if (health.State != LinkState::Lost) return health;
  const std::string between = cat_.Why == pan_.Why ? " and " : ": " + cat_.Why + "; ";
  health.Why = "The K4's " + PortText(cat_) + between + PortText(pan_) + ": " + health.Why;
  if (health.NextTry) health.NextTry = std::min(*health.NextTry, *cat.NextTry);
  return health;
}

/// "CAT port 9200"
std::string K4Session::PortText(const Port& port) const {
  return std::string(port.Name) + " port " + std::to_string(target_.*port.Number);
}

void K4Session::RefreshK4() {
  for (const std::string_view command : kRefresh) SendCat(command);
}

void K4Session::tmrK4_Timer() {
  if (!timerEnabled_) return;
  K4State& state = parts_.State;
  if (!state.K4Active) {
    timerEnabled_ = false;
    return;
  }
  TryLostPorts();
  if (!state.K4Connected) return;
  for (const std::string_view command : kPollBefore) SendCat(command);
  if (std::exchange(sendMinipanSub_, false)) SendPan(state.IsK4D ? "Z1" : "Z0");
  if (state.SubRxOn != -1 && !MonitorSelected_) {
    MonitorSelected_ = true;  // first: the call turns the event loop, and the timer with it
    if (parts_.SelectMonitor) parts_.SelectMonitor(state.SubRxOn);
  }
  for (const std::string_view command : kPollAfter) SendCat(command);
}

void K4Session::TryLostPorts() {
  for (Port* port : {&cat_, &pan_}) {
    if (port->Watch.TryDue())
      port->Socket.Connect(target_.Host, static_cast<std::uint16_t>(target_.*port->Number));
  }
}

void K4Session::SendK4(std::string_view command) {
  std::string text(Trim(command));
  if (!text.ends_with(';')) text += ';';
  SendCat(text);
}

void K4Session::SendCat(std::string_view text) {
  if (cat_.Connected) parts_.WSCat.Send(text);
}

void K4Session::SendPan(std::string_view line) {
  if (pan_.Connected) parts_.WSPan.Send(std::string(line) + "\r\n");
}

void K4Session::PortConnected(Port& port) {
  port.Connected = true;
  port.Told = false;
  parts_.State.K4Connected = true;
  if (!timerEnabled_) return;
  port.Watch.Begin();
  if (&port == &pan_)
    assembler_.Reset();
  else
    K4RxBuffer_.clear();
  OpenPort(port);
}

/// It came late, or again: the radio knows nothing of what this connection missed.
void K4Session::OpenPort(Port& port) {
  port.Opened = true;
  if (cat_.Connected && pan_.Connected) parts_.User.ShowStatus("");
  if (&port == &pan_) {
    SendPan("PING");
    SendPanOpening();
    return;
  }
  MonitorSelected_ = false;
  SendCatOpening();
  RefreshK4();
  sendMinipanSub_ = true;
}

void K4Session::PortEnded(Port& port, std::string_view why) {
  port.Connected = port.Opened = false;
  port.Why = why;
  // Each failed try says the same, and each connection of a radio that drops them.
  if (port.Watch.Steady())
    parts_.User.Log(LogArea::K4, std::string(port.Name) + " connection: " + std::string(why));
  // One is enough: the other works on.
  parts_.State.K4Connected = cat_.Connected || pan_.Connected;
  if (!timerEnabled_) return;
  port.Watch.Lost(port.Why);
}

void K4Session::CatArrived(std::span<const std::uint8_t> bytes) {
  if (timerEnabled_) cat_.Watch.Heard();
  K4RxBuffer_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (!parts_.State.K4ParserBusy && parts_.ParseReplies) parts_.ParseReplies(K4RxBuffer_);
  if (K4RxBuffer_.size() > kMostTextBytes && K4RxBuffer_.find(';') == std::string::npos) {
    if (!std::exchange(cat_.Told, true))
      parts_.User.Log(LogArea::K4, "dropped " + std::to_string(K4RxBuffer_.size()) +
                                       " bytes without \";\"; no more is said of it in this connection");
    K4RxBuffer_.clear();
  }
}

void K4Session::PanArrived(std::span<const std::uint8_t> bytes) {
  if (timerEnabled_) pan_.Watch.Heard();
  if (pan_.Connected) assembler_.Feed(bytes);
}

}  // namespace spectrino
