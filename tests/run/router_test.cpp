// Which kit serves a source and a CAT control, and which buttons go with it.
#include <gtest/gtest.h>

#include "fakes/FakeRig.h"
#include "run/RigRouter.h"

namespace spectrino {
namespace {

TEST(RigRouter, LinesCommandsAndButtonsAgreeForEverySourceAndControl) {
  FakeKit host{{CatWay::Host, CatWay::HostK3, CatWay::HostAndScope}};
  FakeKit k4{{SourceKind::K4, SourceKind::K4D}};
  FakeKit icom{{SourceKind::Icom}};
  FakeKit* const none = nullptr;
  const DeckLayout designed, with60m{BandLayout::With60m, ModeLayout::Designed},
      elecraft{BandLayout::With60m, ModeLayout::WithReverse},
      whole{BandLayout::HostWhole, ModeLayout::Designed};
  k4.Has.Deck = elecraft;
  k4.Has.StepMHz = 0.05;
  icom.Has.Deck = with60m;
  icom.Has.ScopeThroughHost = true;
  icom.Has.StepMHz = 0;
  const RigRouter router({&host, &k4, &icom});
  using enum CatControl;
  const struct {
    SourceKind Source;
    CatControl Control;
    const FakeKit* Lines;
    const FakeKit* Commands;
    DeckLayout Deck;
  } cases[] = {
      {SourceKind::SoundInput, HostIf, none, &host, whole},
      {SourceKind::Demo, FixedLo, none, &host, whole},
      {SourceKind::Recording, HostK3If, none, &host, whole},
      {SourceKind::SoundInput, BridgeIf, none, none, with60m},
      {SourceKind::SoundInput, KetrelIf, none, none, designed},
      {SourceKind::SoundInput, RadioDirect, none, none, designed},
      {SourceKind::SoundInput, IcomViaHost, none, &host, whole},
      {SourceKind::K4, HostIf, &k4, &k4, elecraft},
      {SourceKind::K4D, FixedLo, &k4, &host, whole},
      {SourceKind::K4, HostK3If, &k4, &host, whole},
      {SourceKind::K4D, BridgeFixedLo, &k4, none, elecraft},
      {SourceKind::K4, KetrelFixedLo, &k4, none, designed},
      {SourceKind::K4D, RadioDirect, &k4, &k4, elecraft},
      {SourceKind::K4, IcomViaHost, &k4, &k4, elecraft},
      // The serial Icom: the host's controls lead to it as well.
      {SourceKind::Icom, HostIf, &icom, &icom, with60m},
      {SourceKind::Icom, FixedLo, &icom, &icom, with60m},
      {SourceKind::Icom, HostK3If, &icom, &icom, with60m},
      {SourceKind::Icom, RadioDirect, &icom, &icom, with60m},
      {SourceKind::Icom, IcomViaHost, &icom, &host, with60m},
  };
  for (const auto& at : cases) {
    SCOPED_TRACE(testing::Message() << "source " << static_cast<int>(at.Source) << " control "
                                    << static_cast<int>(at.Control));
    const Route route = router.RouteOf({at.Source, ""}, at.Control);
    EXPECT_EQ(route.Source, at.Lines);
    EXPECT_EQ(route.Control, at.Commands);
    EXPECT_EQ(route.Traits.Deck, at.Deck);
    const double stepMHz = at.Lines == &k4 ? 0.05 : at.Commands == &icom ? 0 : 0.1;
    EXPECT_EQ(route.Traits.StepMHz, stepMHz) << "the source's, unless its back-end alone knows it";
  }
}

}  // namespace
}  // namespace spectrino
