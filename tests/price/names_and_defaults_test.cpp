#include <gtest/gtest.h>

#include <string>

#include "trovenu/price/price_property.h"
#include "trovenu/price/sr_lines.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// Name, options 1 and 2 with their values, and what the settings offer: colour and fill of the rising (Rr)
// and the falling side (Ff), volume at price (V) and its numbers (D), options (1, 2).
constexpr const char *kChartTypes =
    "봉차트|매물대 수|10| |0|RrFf1\n"
    "바차트(시고저종)|매물대 수|10| |0|RF1\n"
    "바차트(고저종)|매물대 수|10| |0|RF1\n"
    "종가선차트|매물대 수|10| |0|R1\n"
    "매물대차트|매물대 수|10| |0|RrFfVD1\n"
    "P&F차트|칸전환|3||0|RF12\n"
    "삼선전환도|칸전환|3||0|RrFf1\n"
    "Swing차트|최소반전폭|3||0|RF1\n"
    "Kagi차트|최소반전폭|3||0|RF1\n"
    "Renko차트|최소변화폭|3||0|RrFf1\n"
    "역시계곡선|이동평균|25||0|1\n"
    "CandleVolume차트||0||0|RrFf\n"
    "EquiVolume차트||0||0|RrFf\n"
    "Flow차트|매물대 수|10||0|R1\n"
    "분산형차트||0||0|RF\n"
    "그물망차트|시작값|10||10|RrFf12\n"
    "ZigZag차트|전환비율|5||0|RrFfV1\n"
    "마켓프로파일|분간격|30||0|1\n"_kr;

constexpr const char *kLines =
    "전일 시가|전일 고가|전일 저가|전일 종가|당일 시가|당일 고가|당일 저가|당일 시고저/3|상한가|하한가|"
    "금주 시가|금주 고가|금주 저가|금월 시가|금월 고가|금월 저가|피봇기준선|피봇1차저항선|피봇2차저항선|"
    "피봇1차지지선|피봇2차지지선|디마크기준선|디마크고가|디마크저가|사용자지정값1|사용자지정값2|"
    "사용자지정값3|사용자지정값4|"_kr;

TEST(NamesAndDefaults, EighteenChartTypes) {
  const SPriceProperty p;
  std::string all;
  for (int i = 0; i < 18; ++i) {
    const std::string part[] = {PriceChartTypeName(i), p.Name1[i].c_str(), p.Value1[i].c_str(),
                                p.Name2[i].c_str(), p.Value2[i].c_str()};
    for (const std::string &text : part) all += text + "|";
    const int offers[] = {p.BlWhiteLineColor[i], p.BlWhiteLineFill[i], p.BlBlackLineColor[i],
                          p.BlBlackLineFill[i],  p.BlVolumeAtPrice[i], p.BlVolumeDisp[i],
                          p.BlName1[i],          p.BlName2[i]};
    for (int k = 0; k < 8; ++k) all += offers[k] != 0 ? std::string(1, "RrFfVD12"[k]) : "";
    all += "\n";
    EXPECT_TRUE(p.Default1[i] == p.Value1[i] && p.Default2[i] == p.Value2[i]) << i;
    EXPECT_TRUE(p.BlValue1[i] == p.BlName1[i] && p.BlValue2[i] == p.BlName2[i]) << i;

    const auto theme = [i](int index) { return i == 17 ? 0U : CThemeManager::GetColor(index); };
    EXPECT_EQ(p.WhiteLineColor[i], theme(i == 10 ? 357 : 343)) << i;
    EXPECT_EQ(p.BlackLineColor[i], theme(i == 10 ? 357 : 344)) << i;
    EXPECT_EQ(p.VolumeAtPriceColor[i], i == 16 || i == 17 ? theme(343) : 10092492U) << i;
    EXPECT_EQ(p.WhiteLineFill[i], i == 12 || i == 17 ? 0 : 1) << i;
    EXPECT_EQ(p.BlackLineFill[i], i == 17 ? 0 : 1) << i;
  }
  EXPECT_EQ(all, kChartTypes);
  EXPECT_STREQ(PriceChartTypeName(-1), "");
  EXPECT_STREQ(PriceChartTypeName(18), "");
}

TEST(NamesAndDefaults, TwentyEightLines) {
  const SSRLines lines;
  std::string all;
  for (int i = 0; i < 28; ++i) {
    all += std::string(SSRLines::LineName(i)) + "|";
    EXPECT_EQ(lines.LineColor[i], CThemeManager::GetColor(347 + i % 10)) << i;
  }
  EXPECT_EQ(all, kLines);
  EXPECT_STREQ(SSRLines::LineName(28), "");
}

}  // namespace
}  // namespace trovenu
