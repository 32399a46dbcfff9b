#pragma once

#include "trovenu/price/price_data.h"

namespace trovenu {

/// The series of a field code; the first eight are the bars.
inline constexpr SVector SPriceData::*kPriceSeries[SPriceData::kFieldCodes] = {
    &SPriceData::close,     &SPriceData::open,        &SPriceData::high,        &SPriceData::low,
    &SPriceData::date,      &SPriceData::volume,      &SPriceData::amount,      &SPriceData::openInterest,
    &SPriceData::eventDate, &SPriceData::eventValue1, &SPriceData::eventValue2,
};

/// Calls `use` with each of the eight bar series.
template <class Data, class Use>
void ForEachBarSeries(Data &data, Use use) {
  for (int code = 0; code < SPriceData::kBarFields; ++code) use(data.*kPriceSeries[code]);
}

}  // namespace trovenu
