#pragma once

namespace trovenu::tool {

class Picture;
struct ChartResult;

/// \name Drawings
/// Each draws the rows of its chart type, the newest ones if not all of them fit readably.
/// @{

/// Columns of X and O.
void DrawPointFigure(const ChartResult &result, Picture &picture);
/// Lines that grow thick (yang) when they pass the last shoulder, thin (yin) when they pass the last waist.
void DrawKagi(const ChartResult &result, Picture &picture);
/// The same lines by direction alone.
void DrawSwing(const ChartResult &result, Picture &picture);
void DrawBricks(const ChartResult &result, Picture &picture);
/// Lines as bricks, and the price of the next reversal.
void DrawThreeLineBreak(const ChartResult &result, Picture &picture);
/// The price average upwards against the volume average to the right.
void DrawCounterClock(const ChartResult &result, Picture &picture);
/// Candles whose width follows the result.
void DrawCandleVolume(const ChartResult &result, Picture &picture);
/// Bars by price beside the line of the closes.
void DrawVolumeAtPrice(const ChartResult &result, Picture &picture);
/// The letters of each day by price.
void DrawMarketProfile(const ChartResult &result, Picture &picture);
/// The line through the turns over the closes.
void DrawZigZag(const ChartResult &result, Picture &picture);
/// The ladder as stairs.
void DrawZigZagSteps(const ChartResult &result, Picture &picture);
/// @}

}  // namespace trovenu::tool
