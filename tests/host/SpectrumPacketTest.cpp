// Datagrams as a rigctld sends them, and as it never should.
#include "host/SpectrumPacket.h"

#include <gtest/gtest.h>

#include <string>

namespace spectrino {
namespace {

/// Of Hamlib 4.5.4 in front of an IC-7300, two points long.
const std::string kPacket =
    R"({"app":"Hamlib","version":"4.5.4 Jan 10 01:31:41Z 2023 SHA=921cc5","seq":0,"crc":0,"rig":{"id":"rig_id",)"
    R"("status":"OK","errorMsg":"","name":"IC-7300","split":false,"splitVfo":"VFOA","satMode":false},"vfos":[{)"
    R"("name":"VFOA","freq":14074000,"mode":"USB","width":2400,"ptt":false,"rx":true,"tx":true}],"spectra":[{)"
    R"("id":0,"name":"Main","type":"CENTER","minLevel":0,"maxLevel":160,"minStrength":-80,"maxStrength":0,)"
    R"("centerFreq":14074000,"span":500000,"lowFreq":13824000,"highFreq":14324000,"length":2,"data":"38A0"}]})";

std::string With(const std::string& what, const std::string& instead) {
  std::string packet = kPacket;
  return packet.replace(packet.find(what), what.size(), instead);
}

/// "mode, low to high, centre and span MHz, level of points: hex"; "-" for nothing.
std::string Read(const std::string& packet) {
  const auto line = ReadSpectrumPacket({reinterpret_cast<const std::uint8_t*>(packet.data()), packet.size()});
  if (!line) return "-";
  std::string text = line->Fixed ? "fixed" : "centre";
  for (const double mhz : {line->LowEdgeMHz, line->HighEdgeMHz, line->CentreMHz, line->SpanMHz})
    text += ' ' + std::to_string(mhz);
  return text + ' ' + std::to_string(line->MaxLevel) + " of " + std::to_string(line->Points) + ": " +
         line->LevelsHex;
}

TEST(SpectrumPacket, IsALineOrIsSkipped) {
  const std::string whole = "centre 13.824000 14.324000 14.074000 0.500000 160 of 2: 38A0";
  const struct {
    std::string Packet, Line;
  } cases[] = {
      {kPacket, whole},
      {With(R"("CENTER")", R"("FIXED")"), "fixed 13.824000 14.324000 14.074000 0.500000 160 of 2: 38A0"},
      {With(R"("4.5.4)", R"("9)"), whole},
      {With(R"("seq":0)", R"("seq":{"later":[]})"), whole},
      {With(R"("spectra":[{)", R"("spectra":[{"id":1},{)"), whole},
      {With(R"("spectra")", R"("others")"), "-"},
      {With(R"("spectra":[{"id":0)", R"("spectra":[{"id":1)"), "-"},
      {With(R"("CENTER")", R"("UNKNOWN")"), "-"},
      {With(R"("CENTER")", "7"), "-"},
      {With(R"("length":2)", R"("length":3)"), "-"},
      {With(R"("length":2)", R"("length":-1)"), "-"},
      {With(R"("length":2)", R"("length":"2")"), "-"},
      {With("38A0", "38AG"), "-"},
      {With("38A0", "38A"), "-"},
      {With("38A0", ""), "-"},
      {With(R"("span":500000)", R"("span":1e308)"), "-"},
      {With(R"("span":500000)", R"("span":1e999)"), "-"},
      {With(R"("span":500000)", R"("span":NaN)"), "-"},
      {With(R"("span":500000)", R"("span":null)"), "-"},
      {With(R"("maxLevel":160)", R"("maxLevel":0)"), "-"},
      {With(R"("lowFreq":13824000)", R"("lowFreq":14324000)"), "-"},
      {With(R"("centerFreq":14074000,)", ""), "-"},
      {kPacket.substr(0, kPacket.size() - 1), "-"},
      {std::string(30000, '['), "-"},
      {"[1]", "-"},
      {"", "-"},
  };
  for (const auto& one : cases) EXPECT_EQ(Read(one.Packet), one.Line) << one.Packet;
}

}  // namespace
}  // namespace spectrino
