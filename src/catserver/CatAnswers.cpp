#include "catserver/CatAnswers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "catserver/CatAbilities.h"
#include "catserver/CatModes.h"
#include "state/Val.h"

namespace spectrino {
namespace {

using Verb = CatVerb;

CatAnswer Asking(const CatWish& wish) {
  return {.Records = {}, .IsSet = true, .Wish = wish};
}

std::string Whole(double value) {
  return std::to_string(std::llround(value));
}

std::string_view NameOf(Vfo vfo) {
  return vfo == Vfo::A ? "VFOA" : "VFOB";
}

/// Nothing for what is no VFO.
std::optional<Vfo> VfoOf(std::string_view name, const CatServerState& radio, const CatSession& session) {
  struct Row {
    std::string_view Name;
    Vfo Which;
  };
  static constexpr std::array<Row, 7> rows{{{"VFOA", Vfo::A},
                                            {"Main", Vfo::A},
                                            {"MainA", Vfo::A},
                                            {"RX", Vfo::A},
                                            {"VFOB", Vfo::B},
                                            {"Sub", Vfo::B},
                                            {"SubA", Vfo::B}}};
  if (name == "currVFO" || name == "VFO" || name == "None") return session.Current;
  if (name == "TX") return radio.TransmitVfo();
  const auto* const row = std::ranges::find(rows, name, &Row::Name);
  return row == rows.end() ? std::nullopt : std::optional(row->Which);
}

/// A whole number, or one with a fraction; no value for any other text.
std::optional<double> Number(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::string ModeWords() {
  std::string words;
  for (const CatMode& row : CatModes()) words += std::string(row.Word) + ' ';
  return words;
}

CatAnswer GetFreq(Vfo vfo, const CatServerState& radio, const char* label) {
  if (const CatResult ready = radio.Ready(vfo); ready != CatResult::Done) return Failed(ready);
  return Values({{label, Whole(radio.FrequencyHz(vfo))}});
}

CatAnswer GetMode(Vfo vfo, const CatServerState& radio, const char* mode, const char* width) {
  if (const CatResult ready = radio.Ready(vfo); ready != CatResult::Done) return Failed(ready);
  const CatMode* named = CatModeOf(radio.ModeOf(vfo));
  if (named == nullptr) return Failed(CatResult::Silent);
  return Values({{mode, std::string(named->Word)}, {width, std::to_string(radio.WidthHz(vfo))}});
}

CatAnswer SetFreq(Vfo vfo, const CatRequest& request) {
  const std::optional<double> hz = Number(request.Arguments[0]);
  if (!hz) return SetDone(CatResult::Invalid);
  return Asking({.What = CatWish::Kind::Frequency, .Of = vfo, .Hz = std::round(*hz)});
}

CatAnswer SetMode(Vfo vfo, const CatRequest& request) {
  if (request.Arguments[0] == "?") return {.Records = {{"", ModeWords()}}, .IsSet = true, .Wish = {}};
  const CatMode* named = CatModeOf(request.Arguments[0]);
  const std::optional<double> width = Number(request.Arguments[1]);
  if (named == nullptr || !width) return SetDone(CatResult::Invalid);
  return Asking(
      {.What = CatWish::Kind::Mode, .Of = vfo, .Exact = named->Exact, .WidthHz = RoundToInt32(*width)});
}

CatAnswer GetSplit(const CatServerState& radio) {
  if (const CatResult ready = radio.Ready(); ready != CatResult::Done) return Failed(ready);
  return Values({{"Split", radio.Split() ? "1" : "0"}, {"TX VFO", std::string(NameOf(radio.TransmitVfo()))}});
}

// One VFO that receives and transmits is no split, whatever it is called.
CatAnswer SetSplit(const CatRequest& request, const CatServerState& radio, const CatSession& session) {
  const std::optional<double> on = Number(request.Arguments[0]);
  const std::optional<Vfo> transmit = VfoOf(request.Arguments[1], radio, session);
  if (!on || !transmit || (*on != 0 && *transmit == Vfo::A)) return SetDone(CatResult::Invalid);
  if (*on != 0 && !radio.HasVfoB()) return SetDone(CatResult::NotAvailable);
  return Asking({.What = CatWish::Kind::Split, .On = *on != 0});
}

CatAnswer GetPtt(const CatServerState& radio) {
  if (const CatResult ready = radio.Ready(); ready != CatResult::Done) return Failed(ready);
  return Values({{"PTT", radio.Radio().Transmitting ? "1" : "0"}});
}

// 0 receive, 1 transmit, 2 with the microphone, 3 with data
CatAnswer SetPtt(const CatRequest& request) {
  const std::optional<double> on = Number(request.Arguments[0]);
  if (!on || *on < 0 || *on > 3 || *on != std::floor(*on)) return SetDone(CatResult::Invalid);
  return Asking({.What = CatWish::Kind::Transmit, .On = *on != 0});
}

CatAnswer SetVfo(const CatRequest& request, const CatServerState& radio, CatSession& session) {
  if (request.Arguments[0] == "?")
    return {.Records = {{"", radio.HasVfoB() ? "VFOA VFOB " : "VFOA "}}, .IsSet = true, .Wish = {}};
  const std::optional<Vfo> vfo = VfoOf(request.Arguments[0], radio, session);
  if (!vfo) return SetDone(CatResult::Invalid);
  if (*vfo == Vfo::B && !radio.HasVfoB()) return SetDone(CatResult::NotAvailable);
  session.Current = *vfo;
  return SetDone(CatResult::Done);
}

CatAnswer GetVfoInfo(const CatRequest& request, const CatServerState& radio, const CatSession& session) {
  const std::optional<Vfo> vfo = VfoOf(request.Arguments[0], radio, session);
  if (!vfo) return Failed(CatResult::Invalid);
  CatAnswer answer = GetFreq(*vfo, radio, "Freq");
  const CatAnswer mode = GetMode(*vfo, radio, "Mode", "Width");
  if (answer.Result != CatResult::Done) return answer;
  if (mode.Result != CatResult::Done) return mode;
  answer.Records.insert(answer.Records.end(), mode.Records.begin(), mode.Records.end());
  answer.Records.push_back({"Split", radio.Split() ? "1" : "0"});
  answer.Records.push_back({"SatMode", "0"});
  return answer;
}

CatAnswer GetPowerStat(const CatServerState& radio) {
  const CatResult ready = radio.Ready();
  if (ready == CatResult::NotAvailable) return Failed(ready);
  return Values({{"Power Status", ready == CatResult::Done ? "1" : "0"}});
}

CatAnswer AnswerForVfo(const CatRequest& request, Vfo vfo, const CatServerState& radio, CatSession& session) {
  switch (request.Verb) {
    case Verb::GetFreq:
      return GetFreq(vfo, radio, "Frequency");
    case Verb::SetFreq:
      return SetFreq(vfo, request);
    case Verb::GetMode:
      return GetMode(vfo, radio, "Mode", "Passband");
    case Verb::SetMode:
      return SetMode(vfo, request);
    case Verb::GetSplitVfo:
      return GetSplit(radio);
    case Verb::SetSplitVfo:
      return SetSplit(request, radio, session);
    case Verb::GetSplitFreq:
      return GetFreq(radio.TransmitVfo(), radio, "TX Frequency");
    case Verb::SetSplitFreq:
      return SetFreq(Vfo::B, request);
    case Verb::GetSplitMode:
      return GetMode(radio.TransmitVfo(), radio, "TX Mode", "TX Passband");
    case Verb::SetSplitMode:
      return SetMode(Vfo::B, request);
    case Verb::GetPtt:
      return GetPtt(radio);
    case Verb::SetPtt:
      return SetPtt(request);
    case Verb::GetLevel:
      return GetLevel(request.Arguments[0], radio);
    case Verb::SetLevel:
      return SetLevel(request.Arguments[0]);
    case Verb::GetFunc:
      return GetFunc(request.Arguments[0], radio);
    default:
      return SetFunc(request.Arguments[0]);
  }
}

CatAnswer AnswerForSession(const CatRequest& request, const CatServerState& radio, CatSession& session,
                           bool& taken) {
  taken = true;
  switch (request.Verb) {
    case Verb::GetVfo:
      return Values({{"VFO", std::string(NameOf(session.Current))}});
    case Verb::SetVfo:
      return SetVfo(request, radio, session);
    case Verb::GetInfo:
      return Values({{"Info", "Spectrino"}});
    case Verb::GetPowerStat:
      return GetPowerStat(radio);
    case Verb::GetLockMode:
      return Values({{"Locked", "0"}});
    case Verb::GetVfoInfo:
      return GetVfoInfo(request, radio, session);
    case Verb::GetVfoList:
      return Values({{"VFOs", radio.HasVfoB() ? "VFOA VFOB " : "VFOA "}});
    case Verb::SetVfoOpt: {
      const std::optional<double> on = Number(request.Arguments[0]);
      if (!on) return SetDone(CatResult::Invalid);
      session.VfoMode = *on != 0;
      return SetDone(CatResult::Done);
    }
    case Verb::CheckVfo:
      return {.Records = {{"ChkVFO", session.VfoMode ? "1" : "0"}}, .NoResult = true, .Wish = {}};
    case Verb::DumpState:
      return DumpState(radio);
    case Verb::Quit:
      return SetDone(CatResult::Done);
    case Verb::NotServed:
      return Failed(CatResult::NotAvailable);
    case Verb::Nonsense:
      return Failed(CatResult::Invalid);
    default:
      taken = false;
      return {};
  }
}

}  // namespace

CatAnswer AnswerTo(const CatRequest& request, const CatServerState& radio, CatSession& session) {
  if (!request.Whole && request.Arguments[0] != "?") return Failed(CatResult::Invalid);
  bool taken = false;
  CatAnswer answer = AnswerForSession(request, radio, session, taken);
  if (taken) return answer;
  const std::optional<Vfo> vfo =
      request.Target.empty() ? std::optional(session.Current) : VfoOf(request.Target, radio, session);
  return vfo ? AnswerForVfo(request, *vfo, radio, session) : Failed(CatResult::Invalid);
}

std::string Rendered(const CatRequest& request, const CatAnswer& answer) {
  const bool extended = request.Separator != 0;
  const char separator = extended ? request.Separator : '\n';
  std::string text;
  if (extended && !answer.NoResult && !request.Name.empty()) {
    const std::string given = request.Given();
    text = std::string(request.Name) + ':' + (given.empty() ? "" : " " + given) + separator;
  }
  const bool done = answer.Result == CatResult::Done;
  if (done) {
    for (const CatAnswer::Record& record : answer.Records) {
      if (extended && !record.Label.empty()) text += record.Label + ": ";
      text += record.Value + (answer.NoResult ? '\n' : separator);
    }
  }
  if (!answer.NoResult && (extended || answer.IsSet || !done))
    text += "RPRT " + std::to_string(static_cast<int>(answer.Result)) + '\n';
  return text;
}

}  // namespace spectrino
