#include "run/RigRouter.h"

#include <algorithm>

namespace spectrino {
namespace {

/// What a way has of its own where no kit tells more of it. Programs that stand between count the bands as
/// their own buttons do.
RadioTraits TraitsOf(CatWay way) {
  switch (way) {
    case CatWay::Host:
    case CatWay::HostAndScope:
      return {.Deck = {BandLayout::HostWhole, ModeLayout::Designed}};
    case CatWay::HostK3:
      return {.Deck = {BandLayout::HostWhole, ModeLayout::Designed}, .ClickChoosesWheel = true};
    case CatWay::Bridge:
      return {
          .Deck = {BandLayout::With60m, ModeLayout::Designed}, .TakesMode = false, .ClickChoosesWheel = true};
    case CatWay::Ketrel:
      return {.TakesMode = false, .ClickChoosesWheel = true};
    case CatWay::Direct:
      return {};
  }
  return {};
}

/// A radio that delivers the spectrum tells its own frequency, unless another way was chosen for that.
bool ControlsItself(const RadioTraits& radio, CatControl control) {
  const CatWay way = RowOf(control).Way;
  if (way == CatWay::Direct || control == CatControl::HostIf) return true;
  if (way == CatWay::HostAndScope) return !radio.ScopeThroughHost;
  return radio.ScopeThroughHost && UsesHost(control);
}

}  // namespace

RadioKit* RigRouter::KitFor(CatWay way) const {
  const auto at = std::ranges::find_if(kits_, [way](const RadioKit* kit) { return kit->Carries(way); });
  return at == kits_.end() ? nullptr : *at;
}

Route RigRouter::RouteOf(const SourceId& source, CatControl control) const {
  const auto serves = [&source](const RadioKit* kit) { return kit->Serves(source); };
  const auto at = std::ranges::find_if(kits_, serves);
  RadioKit* own = at == kits_.end() ? nullptr : *at;
  const CatWay way = RowOf(control).Way;
  if (own != nullptr && (ControlsItself(own->Traits(), control) || own->GoesThrough(way)))
    return {own, own, nullptr, own->Traits()};
  const auto dial =
      std::ranges::find_if(kits_, [&](const RadioKit* kit) { return kit->IsDialOf(source.Kind); });
  Route route{own, KitFor(way), dial == kits_.end() ? nullptr : *dial, TraitsOf(way)};
  // A step that only its back-end knows stays with that one.
  if (own != nullptr && own->Traits().StepMHz != 0) {
    route.Traits.StepText = own->Traits().StepText;
    route.Traits.StepMHz = own->Traits().StepMHz;
  }
  // The scope's own commands, bands among them, go through the host program; the bridge takes the radio's.
  if (own != nullptr && (way == CatWay::HostAndScope || way == CatWay::Bridge))
    route.Traits.Deck = own->Traits().Deck;
  return route;
}

}  // namespace spectrino
