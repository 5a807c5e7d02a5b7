// Widths of an Icom's filters as its command 1A 03 counts them.
// Numbers only; the twin passband tuning (14 07, 14 08) is left alone: no guide tells what its steps are in
// hertz.
#pragma once

namespace spectrino {

/// Hz of a width's number 0..49. radioMode: the shared mode code. AM: 200 Hz to 10 kHz in steps of 200 Hz;
/// else 50 to 500 Hz in steps of 50, then to 3600 Hz (teletype: 2700) in steps of 100. 0: the mode has no
/// widths, or not this one.
[[nodiscard]] double IcomFilterHz(int radioMode, int number);
/// The number of the nearest width that the mode has; -1: none.
[[nodiscard]] int IcomFilterNumber(int radioMode, double hz);

}  // namespace spectrino
