// The way to a command, and those that concern the radio as a whole.
#include "sim/icom/IcomSimControl.h"

#include <cmath>

namespace spectrino {

namespace {

constexpr std::size_t kMenuNumberBytes = 2;

/// S9 is -73 dBm and reads 0120; S0 lies 54 dB below; S9 + 60 dB reads 0240.
std::uint64_t MeterReading(double dBm) {
  const double aboveS9 = dBm + 73;
  const double reading = aboveS9 < 0 ? 120 + aboveS9 * (120.0 / 54) : 120 + aboveS9 * 2;
  return static_cast<std::uint64_t>(std::clamp(std::lround(reading), 0L, 241L));
}

}  // namespace

SimBytes IcomSimControl::Execute(SimByteView command, double seconds) {
  if (command.empty()) return {};
  seconds_ = seconds;
  // Switched off, it hears the command that switches it on and no other.
  if (!state_.PowerOn && command[0] != 0x18) return {};
  const SimAnswer answer = Dispatch(command);
  // 00 and 01 are what radios tell each other; nobody acknowledges them.
  if (command[0] <= 0x01) return {};
  if (!answer.Ok) return {kCivBad};
  if (answer.Data.empty()) return {kCivGood};
  SimBytes reply(command.begin(), command.begin() + static_cast<std::ptrdiff_t>(answer.Head.Size));
  reply.insert(reply.end(), answer.Data.begin(), answer.Data.end());
  return reply;
}

SimAnswer IcomSimControl::Dispatch(SimByteView command) {
  if (const auto answer = vfo_.Execute(command)) return *answer;
  if (const auto answer = scope_.Execute(command)) return *answer;
  if (const auto answer = ExecuteOwn(command)) return *answer;
  return settings_.Execute(command).value_or(SimAnswer{});
}

std::optional<SimAnswer> IcomSimControl::ExecuteOwn(SimByteView command) {
  using C = IcomSimControl;
  static constexpr auto kRows = std::to_array<SimCommandRow<C>>({
      {{0x0E}, &C::Scan},
      {{0x11}, &C::Attenuator},
      {{0x13}, &C::Accept},  // speech
      {{0x15, 0x01}, &C::SquelchOpen},
      {{0x15, 0x02}, &C::SignalMeter},
      {{0x15, 0x11}, &C::QuietMeter},  // power and what else moves while transmitting
      {{0x15, 0x12}, &C::QuietMeter},
      {{0x15, 0x13}, &C::QuietMeter},
      {{0x15, 0x14}, &C::QuietMeter},
      {{0x15, 0x16}, &C::QuietMeter},
      {{0x17}, &C::Accept},  // text to be keyed
      {{0x18}, &C::Power},
      {{0x19, 0x00}, &C::Identify},
      {{0x1A, 0x05}, &C::MenuItem},
  });
  return RunSimCommand<C>(kRows, *this, command);
}

SimAnswer IcomSimControl::Scan(SimByteView data) {
  if (data.size() != 1) return {};
  const std::uint8_t code = data[0];
  // Auto memory write, mode select and priority scan belong to receivers that are not simulated.
  constexpr auto kScans = std::to_array<std::uint8_t>({0x00, 0x01, 0x02, 0x03, 0x12, 0x13, 0x22, 0x23});
  if (std::ranges::find(kScans, code) != kScans.end()) {
    state_.Scan = code;
  } else if (code >= 0xA1 && code <= 0xA7) {
    state_.ScanSpan = code;
  } else if (code == 0xD0 || code == 0xD3) {
    state_.ScanResume = code;
  } else {
    return {};
  }
  return {true};
}

SimAnswer IcomSimControl::Attenuator(SimByteView data) {
  if (data.empty()) return {true, {state_.Attenuator}};
  const auto dB = BcdHigh(data);
  if (data.size() != 1 || !dB) return {};
  const bool steps = model_.Kind == IcomSimKind::Ic7610 && *dB % 3 == 0 && *dB <= 45;
  if (data[0] != 0 && data[0] != model_.AttenuatorDb && !steps) return {};
  state_.Attenuator = data[0];
  return {true};
}

SimAnswer IcomSimControl::Accept(SimByteView) {
  return {true};
}

SimAnswer IcomSimControl::SquelchOpen(SimByteView data) {
  return {data.empty(), {0x01}};
}

SimAnswer IcomSimControl::SignalMeter(SimByteView data) {
  SimAnswer answer{data.empty()};
  const double lost = static_cast<double>(BcdHigh(SimByteView(&state_.Attenuator, 1)).value_or(0));
  const double dBm = band_.PowerAt(static_cast<double>(state_.Active().Hz), seconds_) - lost;
  PutBcdHigh(answer.Data, MeterReading(dBm), 2);
  return answer;
}

SimAnswer IcomSimControl::QuietMeter(SimByteView data) {
  return {data.empty(), {0x00, 0x00}};
}

SimAnswer IcomSimControl::Power(SimByteView data) {
  if (data.empty()) return {true, {static_cast<std::uint8_t>(state_.PowerOn ? 1 : 0)}};
  if (data.size() != 1 || data[0] > 1) return {};
  SwitchPower(data[0] == 1);
  return {true};
}

void IcomSimControl::SwitchPower(bool on) {
  if (!on) StopScopeData();
  state_.PowerOn = on;
}

SimAnswer IcomSimControl::Identify(SimByteView data) {
  return {data.empty(), {model_.Address}};
}

/// number (2 BCD) | value, as long as the item has it: items are kept, but mean nothing.
SimAnswer IcomSimControl::MenuItem(SimByteView data) {
  if (data.size() < kMenuNumberBytes || !BcdHigh(data.first(kMenuNumberBytes))) return {};
  const std::uint32_t key = 0x1A050000U | static_cast<std::uint32_t>(data[0]) << 8U | data[1];
  SimBytes& value = state_.Settings.try_emplace(key, SimBytes{0x00}).first->second;
  if (data.size() > kMenuNumberBytes) {
    value.assign(data.begin() + kMenuNumberBytes, data.end());
    return {true};
  }
  SimAnswer answer{true, {data[0], data[1]}};
  answer.Data.insert(answer.Data.end(), value.begin(), value.end());
  return answer;
}

}  // namespace spectrino
