// spectrino-k4sim: a K4 for those who have none, on the loopback address.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>
#include <optional>

#include "sim/k4/K4SimServer.h"

namespace {

constexpr int kWrongOption = 2;

/// Nothing for what is no port.
std::optional<quint16> PortOf(const QCommandLineParser& line, const char* option) {
  bool valid = false;
  const quint16 port = line.value(option).toUShort(&valid);
  if (valid) return port;
  std::fprintf(stderr, "spectrino-k4sim: --%s %s is no port: they go from 0 (any free one) to 65535\n",
               option, qPrintable(line.value(option)));
  return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
  using spectrino::K4SimServer;
  QCoreApplication application(argc, argv);
  QCommandLineParser line;
  line.setApplicationDescription("A simulated K4: CAT and panadapter stream on the loopback address.");
  line.addHelpOption();
  line.addOptions({{"cat-port", "CAT port; 0: any free one", "port", "9200"},
                   {"pan-port", "panadapter port; 0: any free one", "port", "9201"},
                   {"k4d", "be a K4D, with a second mini-pan"},
                   {"rate", "frames a second of each display", "hz", "20"},
                   {"operator", "somebody turns the VFO now and then"},
                   {"delay-ms", "answer late", "ms", "0"},
                   {"split", "write in pieces of so many bytes", "bytes", "0"},
                   {"drop-every", "lose every n-th write", "n", "0"},
                   {"garbage", "random bytes between replies and frames"},
                   {"close-after", "go away after so many seconds", "s", "0"},
                   {"silent-after", "fall silent after so many seconds", "s", "0"},
                   {"refuse-pan", "keep the panadapter port closed"}});
  line.process(application);
  K4SimServer::Options options;
  const std::optional<quint16> catPort = PortOf(line, "cat-port");
  const std::optional<quint16> panPort = PortOf(line, "pan-port");
  if (!catPort || !panPort) return kWrongOption;
  options.CatPort = *catPort;
  options.PanPort = *panPort;
  options.IsK4D = line.isSet("k4d");
  options.RateHz = line.value("rate").toDouble();
  options.Operator = line.isSet("operator");
  options.Faults = {.DelayMs = line.value("delay-ms").toInt(),
                    .SplitBytes = line.value("split").toInt(),
                    .DropEvery = line.value("drop-every").toInt(),
                    .Garbage = line.isSet("garbage"),
                    .CloseAfterS = line.value("close-after").toDouble(),
                    .SilentAfterS = line.value("silent-after").toDouble(),
                    .RefusePan = line.isSet("refuse-pan")};
  K4SimServer server(options);
  if (!server.Start()) {
    std::fprintf(stderr, "spectrino-k4sim: a port is taken; choose others with --cat-port and --pan-port\n");
    return 1;
  }
  std::printf("READY %u %u\n", server.CatPort(), server.PanPort());
  std::fflush(stdout);
  return QCoreApplication::exec();
}
