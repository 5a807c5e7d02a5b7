// Any bytes on the terminal, cut anywhere: nothing may crash, cutting may not matter, and what is answered
// ends in whole commands.
#include <span>
#include <string>

#include "Require.h"
#include "catserver/CatBench.h"
#include "catserver/KenwoodFace.h"

namespace {

using namespace spectrino;

std::string Answers(std::span<const std::uint8_t> bytes, std::size_t cut, bool obeys) {
  CatBench bench;
  bench.Obeys = obeys;
  std::string out;
  KenwoodFace face(bench.State,
                   {.Send = [&out](std::string_view text) { out += text; },
                    .Told = [](const CatWish& wish, CatResult) { static_cast<void>(wish.Text()); }});
  for (const auto piece : {bytes.first(cut), bytes.subspan(cut)}) fuzz::Require(face.Feed(piece));
  for (int i = 0; face.Busy() && i < 64; ++i) {
    bench.Clock.Advance(CatServerState::kDeadline);
    fuzz::Require(face.Tick());
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span bytes(data, size);
  const std::string whole = Answers(bytes, 0, true);
  fuzz::Require(whole.empty() || whole.back() == ';');
  if (size <= KenwoodFace::kMostCommand) fuzz::Require(Answers(bytes, size / 2, true) == whole);
  static_cast<void>(Answers(bytes, size / 3, false));
  return 0;
}
