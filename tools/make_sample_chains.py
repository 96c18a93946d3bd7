#!/usr/bin/env python3
"""Writes the option desk's sample chains: options on futures of invented commodities.

The volatility over the log-moneyness k = ln(strike / forward) follows from a total variance of the form
w(k) = a + b * (rho * (k - m) + sqrt((k - m)^2 + s^2)) (Gatheral's SVI); the prices are Black's of 1976 at a
rate of zero, rounded to the price step. The same call always writes the same files.

Usage: make_sample_chains.py [FOLDER]
"""

import csv
import datetime
import math
import pathlib
import sys

AS_OF = datetime.date(2024, 3, 15)
DAYS_PER_YEAR = 365.0


class Smile:
    """Variance per year over the log-moneyness, of one shape for all expiries."""

    def __init__(self, level, slope, tilt, shift, width):
        self.level = level
        self.slope = slope
        self.tilt = tilt
        self.shift = shift
        self.width = width

    def volatility(self, moneyness, years):
        # The wings flatten with the square root of time, as those of listed options do.
        distance = moneyness / math.sqrt(years) - self.shift
        root = math.sqrt(distance * distance + self.width * self.width)
        return math.sqrt(self.level + self.slope * (self.tilt * distance + root))


class Instrument:
    def __init__(self, name, decimals, step, smile, expiries):
        self.name = name
        self.decimals = decimals
        self.step = step
        self.smile = smile
        # Tuples of the expiry, the forward and the strikes.
        self.expiries = expiries

    def text(self, price):
        return f"{price:.{self.decimals}f}"

    def rounded(self, price):
        return round(price / self.step) * self.step


def normal_distribution(x):
    return 0.5 * math.erfc(-x / math.sqrt(2.0))


def black_price(is_call, forward, strike, volatility, years):
    deviation = volatility * math.sqrt(years)
    d1 = math.log(forward / strike) / deviation + 0.5 * deviation
    d2 = d1 - deviation
    if is_call:
        return forward * normal_distribution(d1) - strike * normal_distribution(d2)
    return strike * normal_distribution(-d2) - forward * normal_distribution(-d1)


def third_friday(year, month):
    first = datetime.date(year, month, 1)
    return first + datetime.timedelta(days=(4 - first.weekday()) % 7 + 14)


def strikes(first, last, step):
    return [first + step * index for index in range(round((last - first) / step) + 1)]


def activity(is_call, moneyness, years, index):
    """Open interest and volume: most near the money and out of it, in round strikes, in near expiries."""
    nearness = math.exp(-0.5 * (moneyness / (0.5 * math.sqrt(years))) ** 2)
    out_of_money = moneyness >= 0.0 if is_call else moneyness <= 0.0
    roundness = 3.0 if index % 5 == 0 else 1.0
    variation = 1.0 + 0.6 * math.sin(12.9898 * (index + 1) + (0.0 if is_call else 78.233))
    interest = 2500.0 * nearness * roundness * variation * (1.0 if out_of_money else 0.3) / math.sqrt(1.0 + 4.0 * years)
    return int(interest), int(interest * 0.12 * nearness)


def quote(instrument, is_call, forward, strike, years, index):
    moneyness = math.log(strike / forward)
    volatility = instrument.smile.volatility(moneyness, years)
    price = black_price(is_call, forward, strike, volatility, years)
    settlement = max(instrument.rounded(price), instrument.step)
    half_spread = instrument.step * max(1, round(0.01 * price / instrument.step))
    bid = settlement - half_spread
    interest, volume = activity(is_call, moneyness, years, index)
    return {
        "bid": instrument.text(bid) if bid > 0.5 * instrument.step else "",
        "ask": instrument.text(settlement + half_spread),
        "settlement": instrument.text(settlement),
        "volume": volume,
        "open_interest": interest,
        "implied_volatility": f"{volatility:.4f}",
    }


def quotes(instrument):
    """Yields expiry, forward, strike and the quotes of the call and the put."""
    for expiry, forward, all_strikes in instrument.expiries:
        years = (expiry - AS_OF).days / DAYS_PER_YEAR
        for index, strike in enumerate(all_strikes):
            call = quote(instrument, True, forward, strike, years, index)
            put = quote(instrument, False, forward, strike, years, index)
            yield expiry, forward, strike, call, put


def write_rows(folder, instrument, header, rows):
    path = folder / f"{instrument.name.lower()}_options_{AS_OF.isoformat()}.csv"
    with open(path, "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(header)
        writer.writerows(rows)


def write_by_option(folder, instrument):
    values = ["bid", "ask", "settlement", "volume", "open_interest", "implied_volatility"]
    rows = []
    for expiry, forward, strike, call, put in quotes(instrument):
        for letter, option in (("C", call), ("P", put)):
            rows.append([instrument.name.upper(), AS_OF, expiry, instrument.text(forward), letter, instrument.text(strike)]
                        + [option[value] for value in values])
    write_rows(folder, instrument,
               ["underlying", "quote_date", "expiry", "future_price", "type", "strike"] + values, rows)


def write_by_strike(folder, instrument):
    values = ["bid", "ask", "settlement", "open_interest"]
    rows = []
    for expiry, _, strike, call, put in quotes(instrument):
        rows.append([expiry, instrument.text(strike)] + [option[value] for option in (call, put) for value in values])
    write_rows(folder, instrument,
               ["expiry", "strike"] + [f"{side}_{value}" for side in ("call", "put") for value in values], rows)


def instruments():
    """Amber, Cobalt and Fennel."""
    amber = Instrument("Amber", 2, 0.01, Smile(0.030, 0.110, -0.25, 0.05, 0.30), [
        (third_friday(2024, 4), 81.20, strikes(62.0, 100.0, 1.0)),
        (third_friday(2024, 6), 80.45, strikes(56.0, 110.0, 1.0)),
        (third_friday(2024, 9), 79.10, strikes(50.0, 120.0, 2.5)),
    ])
    cobalt = Instrument("Cobalt", 1, 0.5, Smile(0.012, 0.055, -0.55, 0.10, 0.25), [
        (third_friday(2024, 4), 5174.5, strikes(4400.0, 5700.0, 25.0)),
        (third_friday(2024, 6), 5221.0, strikes(3900.0, 6200.0, 50.0)),
        (third_friday(2024, 9), 5283.5, strikes(3400.0, 6800.0, 100.0)),
        (third_friday(2024, 12), 5341.0, strikes(3000.0, 7400.0, 200.0)),
    ])
    fennel = Instrument("Fennel", 4, 0.0025, Smile(0.040, 0.160, 0.35, -0.05, 0.20), [
        (third_friday(2024, 5), 4.3825, strikes(3.40, 5.80, 0.05)),
        (third_friday(2024, 7), 4.4650, strikes(3.00, 6.50, 0.10)),
    ])
    return amber, cobalt, fennel


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else (
        pathlib.Path(__file__).resolve().parent.parent / "apps" / "optiondesk" / "samples")
    amber, cobalt, fennel = instruments()
    write_by_option(folder, amber)
    write_by_strike(folder, cobalt)
    write_by_option(folder, fennel)


if __name__ == "__main__":
    main()
