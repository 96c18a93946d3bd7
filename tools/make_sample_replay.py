#!/usr/bin/env python3
"""Writes recorded quotes for a bundled sample chain, to be replayed by the option desk.

The future walks at random in price steps; the options near it follow at Black's value under the chain's
smile and the walk of its level. The same call always writes the same quotes.

Usage: make_sample_replay.py [--rate QUOTES_PER_SECOND] [--seconds N] [--seed N] [--chain NAME] [FILE]
"""

import argparse
import csv
import math
import random
import sys

import make_sample_chains as samples


class Market:
    """The future and the options of a chain's nearest series."""

    # The future's and the volatility's standard deviation over the root of a second, as a fraction.
    FUTURE_DEVIATION = 2e-4
    LEVEL_DEVIATION = 2e-3

    def __init__(self, instrument, seed):
        self.instrument = instrument
        self.expiry, self.future, self.strikes = instrument.expiries[0]
        self.years = (self.expiry - samples.AS_OF).days / samples.DAYS_PER_YEAR
        self.level = 1.0
        self.random = random.Random(seed)

    def name(self, end=""):
        return f"{self.instrument.name.upper()} {self.expiry.isoformat()}{end}"

    def walk(self, seconds):
        root = math.sqrt(seconds)
        self.future *= math.exp(self.FUTURE_DEVIATION * root * self.random.gauss(0.0, 1.0))
        self.level *= math.exp(self.LEVEL_DEVIATION * root * self.random.gauss(0.0, 1.0))

    def prices(self, value):
        """Bid, ask and last around a value, as texts; no bid below a step."""
        step = self.instrument.step
        middle = max(self.instrument.rounded(value), step)
        half_spread = step * max(1, round(0.005 * value / step))
        bid = middle - half_spread
        last = self.random.choice(["", "", self.instrument.text(middle)])
        return [self.instrument.text(bid) if bid > 0.5 * step else "", self.instrument.text(middle + half_spread), last]

    def future_quote(self):
        step = self.instrument.step
        last = self.instrument.rounded(self.future)
        return [self.name()] + [self.instrument.text(price) for price in (last - step, last + step, last)]

    def option_quote(self):
        deviation = self.level * self.instrument.smile.volatility(0.0, self.years) * math.sqrt(self.years)
        wanted = self.future * math.exp(self.random.gauss(0.0, deviation))
        strike = min(self.strikes, key=lambda candidate: abs(candidate - wanted))
        is_call = self.random.random() < 0.5
        volatility = self.level * self.instrument.smile.volatility(math.log(strike / self.future), self.years)
        value = samples.black_price(is_call, self.future, strike, volatility, self.years)
        # Names hold a strike as short as it is exact.
        text = self.instrument.text(strike)
        text = text.rstrip("0").rstrip(".") if "." in text else text
        return [self.name(f" {'C' if is_call else 'P'} {text}")] + self.prices(value)


def rows(market, rate, seconds):
    """One quote in ten is the future's."""
    for index in range(round(rate * seconds)):
        market.walk(1.0 / rate)
        quote = market.future_quote() if index % 10 == 0 else market.option_quote()
        yield [int(index * 1000 / rate)] + quote


def positive(text):
    value = float(text)
    if not 0.0 < value < math.inf:
        raise argparse.ArgumentTypeError("a positive number is needed")
    return value


def main():
    instruments = {instrument.name.lower(): instrument for instrument in samples.instruments()}
    parser = argparse.ArgumentParser(description="Writes recorded quotes for a bundled sample chain.")
    parser.add_argument("--rate", type=positive, default=100.0, help="quotes a second (100)")
    parser.add_argument("--seconds", type=positive, default=60.0, help="length of the recording (60)")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--chain", choices=sorted(instruments), default="amber")
    parser.add_argument("file", nargs="?", help="standard output where none is named")
    options = parser.parse_args()
    market = Market(instruments[options.chain], options.seed)
    output = open(options.file, "w", newline="", encoding="utf-8") if options.file else sys.stdout
    with output:
        writer = csv.writer(output, lineterminator="\n")
        writer.writerow(["time", "instrument", "bid", "ask", "last"])
        writer.writerows(rows(market, options.rate, options.seconds))


if __name__ == "__main__":
    main()
