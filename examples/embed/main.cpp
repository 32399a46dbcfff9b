// Evaluates a formula over a dozen bars, as a host of the library does.
// Messages are in the Korean code page; to read them: embed | iconv -f CP949 -t UTF-8
#include <trovenu/trovenu.h>

#include <cstdio>

int main() {
  const double closes[] = {100, 102, 101, 105, 107, 106, 104, 108, 111, 110, 113, 115};
  trovenu::SVector close, open, high, low, volume, date, openInterest, amount;
  double day = 20240102;
  for (const double value : closes) {
    close.Add(value);
    open.Add(value - 1);
    high.Add(value + 1);
    low.Add(value - 2);
    volume.Add(1000);
    date.Add(day++);
    openInterest.Add(0);
    amount.Add(1000 * value);
  }

  trovenu::SCalc calc;
  calc.SetVariable(close, open, high, low, volume, date, openInterest, amount);

  calc.SetExpression("avg(c,3)");
  trovenu::SVector average = calc.Calculate();
  std::printf("avg(c,3), valid from bar %d:", average.GetStartIndex());
  for (int i = average.GetStartIndex(); i < average.GetSize(); ++i) std::printf(" %g", average[i]);
  std::printf("\n");

  calc.SetExpression("avg(c,3");
  calc.Calculate();
  std::printf("avg(c,3 has %d fault(s): %s\n", calc.errorCount, calc.errorText.c_str());
  return 0;
}
