// Any bytes from a client of the CAT server, cut anywhere: nothing may crash, cutting may not matter, and
// what is answered ends in whole lines.
#include <span>
#include <string>

#include "Require.h"
#include "catserver/CatBench.h"
#include "catserver/RigctldFace.h"

namespace {

using namespace spectrino;

std::string Answers(std::span<const std::uint8_t> bytes, std::size_t cut, bool obeys) {
  CatBench bench;
  bench.Obeys = obeys;
  std::string out;
  RigctldFace face(bench.State,
                   {.Send = [&out](std::string_view text) { out += text; },
                    .Told = [](const CatWish& wish, CatResult) { static_cast<void>(wish.Text()); }});
  bool stays = face.Feed(bytes.first(cut)) && face.Feed(bytes.subspan(cut));
  for (int i = 0; stays && face.Busy() && i < 64; ++i) {
    bench.Clock.Advance(CatServerState::kDeadline);
    stays = face.Tick();
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span bytes(data, size);
  const std::string whole = Answers(bytes, 0, true);
  fuzz::Require(whole.empty() || whole.back() == '\n');
  // One that is let go of in between hears what was answered till then.
  const std::string cut = Answers(bytes, size / 2, true);
  fuzz::Require(cut.starts_with(whole) || whole.starts_with(cut));
  if (size <= RigctldFace::kMostLine) fuzz::Require(cut == whole);
  static_cast<void>(Answers(bytes, size / 3, false));
  return 0;
}
