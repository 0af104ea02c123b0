// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Adds up a bill, exactly. Prices are given as arguments, "12.50" or "12,50"; without any
// there is a bill to show:
//
//     example-decimals 19.90 4.50 0.05

#include "bcdiivalue.h"

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

using namespace BCDIILiterals;

namespace {

using Money = BCDIIValue<15, 2>;
using Rate = BCDIIValue<5, 4>;

// What the bits of a status word say.
std::string explain(UINT32 status)
{
    static const std::pair<UINT32, const char *> reasons[] = {
        {0x80, "an operand was not a number"}, {0x20, "no number"},          {0x01, "does not fit"},
        {0x40, "digits were rounded away"},    {0x04, "exact and negative"}, {0x02, "zero"}};
    for (const auto &[bit, reason] : reasons) {
        if ((status & bit) != 0)
            return reason;
    }
    return "exact";
}

void print(const char *what, Money amount)
{
    std::printf("%-24s %12s\n", what, amount.toString().c_str());
}

// Where and why a text is not a price.
std::string complaint(const std::string &text, const BCDIIParsed<Money> &parsed)
{
    if (text.empty())
        return "empty";
    if (parsed.position == text.size())
        return "ends too early";
    const bool isTooFine = (parsed.status & 0x40) != 0;
    return (isTooFine ? "less than a cent" : explain(parsed.status)) + ", from \""
        + text.substr(parsed.position) + "\" on";
}

// Adds the prices that are numbers, and says what is wrong with the others.
Money sumOf(const std::vector<std::string> &prices)
{
    Money total;
    for (const std::string &text : prices) {
        const BCDIIParsed<Money> price = Money::parse(text);
        if (!price) {
            std::printf("%-24s left out: %s\n", text.c_str(), complaint(text, price).c_str());
            continue;
        }
        print("", price.value);
        total += price.value;
    }
    return total;
}

// A tenth three times is three tenths, a third cannot be written, and too much is no number.
void showLimits()
{
    const double binary = 0.1 + 0.1 + 0.1;
    const bool isExact = 0.1_bcd + 0.1_bcd + 0.1_bcd == 0.3_bcd;
    std::printf("\n0.1 + 0.1 + 0.1 == 0.3:  %s as doubles, %s as decimals\n",
                binary == 0.3 ? "true" : "false", isExact ? "true" : "false");

    UINT32 status = 0;
    const auto third = Money::product(10_bcd, 0.3333_bcd, BCDII_ROUND_DOWN, &status);
    std::printf("10 * 0.3333 = %s (%s)\n", third.toString().c_str(), explain(status).c_str());
    const Money tooMuch =
        Money::sum(Money::highest(), Money::smallest(), BCDII_ROUND_NEAREST, &status);
    std::printf("%s + %s = %s (%s)\n", Money::highest().toString().c_str(),
                Money::smallest().toString().c_str(), tooMuch.toString().c_str(),
                explain(status).c_str());
}

} // namespace

int main(int argc, char *argv[])
{
    std::vector<std::string> prices(argv + 1, argv + argc);
    if (prices.empty())
        prices = {"19.90", "4,50", "0.05", "-2.00", "free", "1,234.50", "9.999", "7 EUR"};

    const Money total = sumOf(prices);
    print("net", total);
    const Rate rate = Rate::parse("0.1905").value;
    UINT32 status = 0;
    const Money tax = Money::product(total, rate, BCDII_ROUND_NEAREST, &status);
    print("tax at 19.05 %", tax);
    std::printf("%-24s %s\n", "", explain(status).c_str());
    print("gross", total + tax);
    showLimits();
    return 0;
}
