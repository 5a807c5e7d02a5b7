// Any bytes from a CAT server, cut anywhere: nothing may crash, nothing may be kept beyond its bound, and
// cutting may not matter. The answers go where a real one's would: into the radio's state.
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "fakes/FakeClock.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "host/HostRadio.h"

namespace {

using namespace spectrino;

struct DeafSocket final : ByteSocket {
  void Connect(const std::string&, std::uint16_t) override {}
  void Close() override {}
  void Send(std::string_view) override {}
};

std::string Answers(std::span<const std::uint8_t> bytes, std::size_t cut) {
  std::string all;
  RigctldReader reader([&all](const RigctldReply& reply) {
    all += reply.Command + '|' + std::to_string(reply.Code);
    for (const std::string& line : reply.Lines) all += '|' + line;
    all += '\n';
  });
  if (reader.Feed(bytes.first(cut))) static_cast<void>(reader.Feed(bytes.subspan(cut)));
  return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span bytes(data, size);
  if (Answers(bytes, 0) != Answers(bytes, size / 2)) std::abort();

  FakeClock clock;
  MemorySettingsFile file;
  RecordingNotifier user;
  SettingsStore store(file, user, clock);
  DeafSocket socket;
  HostRadio radio(socket, store, user, clock);
  radio.Open({}, HostReads::Everything);
  radio.SetHostFound(true);
  socket.Connected();
  // A line at a time, so that each read is under way when something comes.
  for (std::size_t from = 0; from < size;) {
    std::size_t end = from;
    while (end < size && data[end] != '\n') ++end;
    socket.DataArrival(bytes.subspan(from, std::min(end + 1, size) - from));
    clock.Advance(std::chrono::milliseconds(300));
    radio.Tick();
    if (radio.Client().IsConnected()) radio.HostSetFrequency(14.1, Vfo::A);
    from = end + 1;
  }
  for (const Vfo vfo : {Vfo::A, Vfo::B})
    if (!(radio.HostGetFrequency(vfo) >= 0)) std::abort();
  return 0;
}
