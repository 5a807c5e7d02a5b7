#include "app/KitNews.h"

namespace spectrino {

void KitNews::WindowIs(WindowCommands* window) const {
  for (RadioKit* kit : router_.Kits()) kit->SetWindow(window);
}

void KitNews::WayChosen(CatWay way) const {
  for (RadioKit* kit : router_.Kits()) kit->WayChosen(way);
}

void KitNews::RunChanged(bool running, const RadioKit* source) const {
  for (RadioKit* kit : router_.Kits()) kit->RunChanged(running && kit == source);
}

void KitNews::PauseLines(bool pause, bool minimised) const {
  for (RadioKit* kit : router_.Kits()) {
    RadioLink* link = kit->Link();
    if (link != nullptr && pause) link->BeforeLayout();
    if (link != nullptr && !pause) link->AfterLayout(minimised);
  }
}

}  // namespace spectrino
