#include "trovenu/backtest/simulation.h"

namespace trovenu {

namespace {

// What a fill costs: a fraction of its price, and an amount of money beside it.
struct Costs {
  double fraction = 0.0;
  double amount = 0.0;

  void Add(double cost, int mode) { (mode == 0 ? fraction : amount) += cost; }
};

Costs EntryCosts(const SSimulationSetting &setting) {
  Costs costs;
  costs.Add(setting.EntryCommission, setting.ModeEntryCommission);
  costs.Add(setting.Slippage, setting.ModeSlippage);
  return costs;
}

Costs ExitCosts(const SSimulationSetting &setting) {
  Costs costs;
  costs.Add(setting.ExitCommission, setting.ModeExitCommission);
  costs.Add(setting.Slippage, setting.ModeSlippage);
  return costs;
}

}  // namespace

double SSimulation::EntryPrice(double price, int side) const {
  const Costs costs = EntryCosts(Setting);
  const double money = BigPointValue * price;
  return (side == 0 ? money * (1.0 + costs.fraction) + costs.amount
                    : money * (1.0 - costs.fraction) - costs.amount) /
         BigPointValue;
}

double SSimulation::ExitPrice(double price, int side) const {
  const Costs costs = ExitCosts(Setting);
  const double money = BigPointValue * price;
  const double paid = side == 0 ? money * (1.0 - costs.fraction) - costs.amount
                                : money * (1.0 + costs.fraction) + costs.amount;
  // Required: with BlPointUnit clear an exit stays in money, while an entry is in points.
  return BlPointUnit != 0 ? paid / BigPointValue : paid;
}

double SSimulation::GetCommission(double price) const {
  // Required: the equity curve charges an exit as an entry; ExitCommission is not read.
  const Costs costs = EntryCosts(Setting);
  const double money = BigPointValue * price * costs.fraction + costs.amount;
  return BlPointUnit != 0 ? money / BigPointValue : money;
}

}  // namespace trovenu
