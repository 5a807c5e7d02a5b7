// What the sound tests share: a private server, signals that are recognised sample by sample, patient
// reading. No cases of its own.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "adapters/sound/PulseInput.h"
#include "fakes/PrivateSoundServer.h"
#include "fakes/Recorders.h"

namespace spectrino {

using namespace std::chrono_literals;
using Samples = std::vector<std::int16_t>;

/// Interleaved noise, so that any exchange, scaling, loss or repetition of samples shows. Begins with 1, 2.
inline Samples MakeNoise(double seconds, int rateHz) {
  Samples noise(static_cast<std::size_t>(seconds * rateHz) * 2);
  std::minstd_rand random(42);
  for (std::int16_t& sample : noise) sample = static_cast<std::int16_t>(random() & 0xFFFF);
  noise[0] = 1;
  noise[1] = 2;
  return noise;
}

/// Polls as the frame loop does, until the block is there, the stream has failed or the time is up.
inline BlockState TakeSoon(SoundStream& stream, Samples& block, std::chrono::milliseconds patience = 3s) {
  const auto end = std::chrono::steady_clock::now() + patience;
  BlockState state = BlockState::Pending;
  while ((state = stream.TakeBlock(block)) == BlockState::Pending && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(1ms);
  return state;
}

class Stopwatch {
 public:
  [[nodiscard]] std::chrono::milliseconds Elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start_);
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// For the names of tests.
inline std::string KindName(SoundServerKind kind) {
  return kind == SoundServerKind::PipeWire ? "PipeWire_" : "PulseAudio_";
}

/// A started server and an input that talks to it.
struct SoundBench {
  explicit SoundBench(SoundServerKind kind = SoundServerKind::PulseAudio) : Server(kind) {
    Server.PointClientsHere();
  }
  void Start(int rateHz) { ASSERT_EQ(Server.Start(rateHz), ""); }
  /// A session manager on a busy machine may need longer for its links than an operator is left waiting.
  [[nodiscard]] std::unique_ptr<SoundStream> OpenPatiently(const SoundDevice& device, int rateHz,
                                                           int blockFrames) {
    std::unique_ptr<SoundStream> stream;
    for (int tries = 0; tries < 3 && stream == nullptr; ++tries)
      stream = Input.Open(device, rateHz, blockFrames, Reason);
    return stream;
  }
  [[nodiscard]] SoundDevice Receiver() const {
    SoundDevice device;
    device.Name = "Receiver";
    device.StableId = "pulse:iq";
    return device;
  }

  PrivateSoundServer Server;
  RecordingNotifier Notifier;
  PulseInput Input{Notifier};
  std::string Reason;
};

}  // namespace spectrino
