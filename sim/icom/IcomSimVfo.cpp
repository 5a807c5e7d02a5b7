#include "sim/icom/IcomSimVfo.h"

#include <utility>

namespace spectrino {

namespace {

constexpr int kMemoryChannels = 99;

}  // namespace

IcomSimVfo::IcomSimVfo(const IcomSimModel& model, IcomSimState& state, const IcomSimSettings& settings)
    : model_(model), state_(state), settings_(settings) {
  for (SimVfo& vfo : state_.Vfos) vfo.Hz = model.StartHz;
  state_.Recalled = ChannelContent(state_.MemoryChannel);
}

std::optional<SimAnswer> IcomSimVfo::Execute(SimByteView command) {
  using C = IcomSimVfo;
  static constexpr auto kRows = std::to_array<SimCommandRow<C>>({
      {{0x00}, &C::SetFrequency},
      {{0x01}, &C::SetMode},
      {{0x02}, &C::BandEdges},
      {{0x03}, &C::ReadFrequency},
      {{0x04}, &C::ReadMode},
      {{0x05}, &C::SetFrequency},
      {{0x06}, &C::SetMode},
      {{0x07}, &C::SelectVfo},
      {{0x08}, &C::SelectMemory},
      {{0x09}, &C::WriteMemory},
      {{0x0A}, &C::MemoryToVfo},
      {{0x1A, 0x06}, &C::DataMode},
      {{0x1C, 0x03}, &C::TransmitFrequency},
      {{0x25}, &C::VfoFrequency},
      {{0x26}, &C::VfoMode},
  });
  return RunSimCommand<C>(kRows, *this, command);
}

bool IcomSimVfo::TuneTo(std::int64_t hz) {
  if (!model_.Receives(hz)) return false;
  state_.Active().Hz = hz;
  return true;
}

bool IcomSimVfo::HasMode(std::uint8_t mode) const {
  switch (mode) {
    case 0x06:  // WFM
      return model_.Kind == IcomSimKind::Ic705;
    case 0x12:  // PSK and its reverse
    case 0x13:
      return model_.Kind == IcomSimKind::Ic7610;
    case 0x17:  // DV
      return model_.Kind == IcomSimKind::Ic705 || model_.Kind == IcomSimKind::Ic9700;
    case 0x22:  // DD
      return model_.Kind == IcomSimKind::Ic9700;
    default:
      return mode <= 0x08;
  }
}

SimVfo IcomSimVfo::ChannelContent(int channel) const {
  const auto written = state_.Memories.find(channel);
  if (written != state_.Memories.end()) return written->second;
  return {model_.StartHz + 1'000 * channel, 0x01, 0, 1};
}

SimAnswer IcomSimVfo::SetFrequency(SimByteView data) {
  const auto hz = BcdLow(data);
  if (data.size() != kBcdHzBytes || !hz) return {};
  return {TuneTo(static_cast<std::int64_t>(*hz))};
}

/// mode [filter]: the filter stays the radio's own choice when it is left out.
SimAnswer IcomSimVfo::SetMode(SimByteView data) {
  if (data.empty() || data.size() > 2 || !HasMode(data[0])) return {};
  const std::uint8_t filter = data.size() == 2 ? data[1] : 1;
  if (filter < 1 || filter > 3) return {};
  SimVfo& vfo = state_.Active();
  vfo.Mode = data[0];
  vfo.Filter = filter;
  vfo.Data = 0;
  return {true};
}

SimAnswer IcomSimVfo::ReadFrequency(SimByteView data) {
  SimAnswer answer{data.empty()};
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(state_.Active().Hz));
  return answer;
}

SimAnswer IcomSimVfo::ReadMode(SimByteView data) {
  return {data.empty(), {state_.Active().Mode, state_.Active().Filter}};
}

/// low edge (5 BCD) | 2D | high edge (5 BCD)
SimAnswer IcomSimVfo::BandEdges(SimByteView data) {
  SimAnswer answer{data.empty()};
  for (const SimHzRange& range : model_.Coverage) {
    if (!range.Holds(state_.Active().Hz)) continue;
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(range.LowHz));
    answer.Data.push_back(0x2D);
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(range.HighHz));
  }
  return answer;
}

SimAnswer IcomSimVfo::SelectVfo(SimByteView data) {
  if (data.empty()) {
    state_.MemoryMode = false;
    return {true};
  }
  const bool two = model_.Receivers == 2;
  if (two && data[0] == 0xD2 && data.size() == 1) {
    return {true, {0xD2, static_cast<std::uint8_t>(state_.Selected)}};
  }
  if (data.size() != 1) return {};
  switch (data[0]) {
    case 0x00:
    case 0x01:
      state_.Selected = data[0];
      break;
    case 0xA0:
      state_.Vfos[1 - state_.Selected] = state_.Vfos[state_.Selected];
      return {true};
    case 0xB0:
      std::swap(state_.Vfos[0], state_.Vfos[1]);
      return {true};
    case 0xD0:
    case 0xD1:
      if (!two) return {};
      state_.Selected = data[0] & 1U;
      break;
    default:
      return {};
  }
  state_.MemoryMode = false;
  return {true};
}

/// [channel (2 BCD)]: without a channel the memory mode as it was left.
SimAnswer IcomSimVfo::SelectMemory(SimByteView data) {
  if (!data.empty()) {
    const auto channel = BcdHigh(data);
    if (data.size() != 2 || !channel || *channel < 1 || *channel > kMemoryChannels) return {};
    state_.MemoryChannel = static_cast<int>(*channel);
  }
  state_.MemoryMode = true;
  state_.Recalled = ChannelContent(state_.MemoryChannel);
  return {true};
}

SimAnswer IcomSimVfo::WriteMemory(SimByteView data) {
  if (!data.empty()) return {};
  state_.Memories[state_.MemoryChannel] = state_.Active();
  return {true};
}

SimAnswer IcomSimVfo::MemoryToVfo(SimByteView data) {
  if (!data.empty()) return {};
  state_.Vfos[state_.Selected] = ChannelContent(state_.MemoryChannel);
  return {true};
}

/// 25 | 00 selected, 01 the other | frequency (5 BCD)
SimAnswer IcomSimVfo::VfoFrequency(SimByteView data) {
  if (data.empty() || data[0] > 1) return {};
  SimVfo& vfo = data[0] == 0 ? state_.Active() : state_.Vfos[1 - state_.Selected];
  if (data.size() == 1) {
    SimAnswer answer{true, {data[0]}};
    PutBcdLow(answer.Data, static_cast<std::uint64_t>(vfo.Hz));
    return answer;
  }
  const auto hz = BcdLow(data.subspan(1));
  if (data.size() != 1 + kBcdHzBytes || !hz || !model_.Receives(static_cast<std::int64_t>(*hz))) return {};
  vfo.Hz = static_cast<std::int64_t>(*hz);
  return {true};
}

/// 26 | 00 selected, 01 the other | mode | data mode | filter
SimAnswer IcomSimVfo::VfoMode(SimByteView data) {
  if (data.empty() || data[0] > 1) return {};
  SimVfo& vfo = data[0] == 0 ? state_.Active() : state_.Vfos[1 - state_.Selected];
  if (data.size() == 1) return {true, {data[0], vfo.Mode, vfo.Data, vfo.Filter}};
  const std::uint8_t dataMode = data.size() > 2 ? data[2] : 0;
  const std::uint8_t filter = data.size() > 3 ? data[3] : 1;
  if (data.size() > 4 || !HasMode(data[1]) || dataMode > MostDataMode() || filter < 1 || filter > 3)
    return {};
  vfo.Mode = data[1];
  vfo.Data = dataMode;
  vfo.Filter = filter;
  return {true};
}

/// 1A 06 | data mode | filter, 00 with data mode off
SimAnswer IcomSimVfo::DataMode(SimByteView data) {
  SimVfo& vfo = state_.Active();
  if (data.empty()) return {true, {vfo.Data, vfo.Data == 0 ? std::uint8_t{0} : vfo.Filter}};
  if (data.size() != 2 || data[0] > MostDataMode() || data[1] > 3) return {};
  vfo.Data = data[0];
  if (data[1] != 0) vfo.Filter = data[1];
  return {true};
}

SimAnswer IcomSimVfo::TransmitFrequency(SimByteView data) {
  SimAnswer answer{data.empty()};
  const SimVfo& vfo = settings_.Value({0x0F}) == 1 ? state_.Vfos[1 - state_.Selected] : state_.Active();
  PutBcdLow(answer.Data, static_cast<std::uint64_t>(vfo.Hz));
  return answer;
}

}  // namespace spectrino
