#include "engine/draw/GuideValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace lumivane::engine {
namespace {

constexpr double perRadian = 180 * 60000 / std::numbers::pi;

double bounded(double value)
{
    return std::isfinite(value) ? std::clamp(value, -1e12, 1e12) : 0;
}

double result(std::string_view op, double a, double b, double c)
{
    if (op == "val")
        return a;
    if (op == "*/")
        return a * b / c;
    if (op == "+-")
        return a + b - c;
    if (op == "+/")
        return (a + b) / c;
    if (op == "?:")
        return a > 0 ? b : c;
    if (op == "abs")
        return std::abs(a);
    if (op == "max")
        return std::max(a, b);
    if (op == "min")
        return std::min(a, b);
    if (op == "mod")
        return std::hypot(a, b, c);
    if (op == "pin")
        return b < a ? a : std::min(b, c);
    if (op == "sqrt")
        return std::sqrt(a);
    if (op == "sin")
        return a * std::sin(b / perRadian);
    if (op == "cos")
        return a * std::cos(b / perRadian);
    if (op == "tan")
        return a * std::tan(b / perRadian);
    if (op == "at2")
        return std::atan2(b, a) * perRadian;
    if (op == "cat2")
        return a * std::cos(std::atan2(c, b));
    if (op == "sat2")
        return a * std::sin(std::atan2(c, b));
    return 0;
}

} // namespace

GuideValues::GuideValues(const QSizeF& size, const std::vector<Guide>& adjusts, const std::vector<Guide>& guides)
{
    const double w = size.width(), h = size.height(), ss = std::min(w, h);
    m_values = {{"w", w},         {"h", h},        {"l", 0},       {"t", 0},         {"r", w},
                {"b", h},         {"hc", w / 2},   {"vc", h / 2},  {"ss", ss},       {"ls", std::max(w, h)},
                {"cd2", 10.8e6},  {"cd4", 5.4e6},  {"cd8", 2.7e6}, {"3cd4", 16.2e6}, {"3cd8", 8.1e6},
                {"5cd8", 13.5e6}, {"7cd8", 18.9e6}};
    for (const int share : {2, 3, 4, 5, 6, 8, 10, 12, 16, 32}) {
        for (const auto& [name, side] : {std::pair{"wd", w}, {"hd", h}, {"ssd", ss}})
            m_values[name + std::to_string(share)] = side / share;
    }
    for (const std::vector<Guide>* list : {&adjusts, &guides}) {
        for (const Guide& guide : *list)
            add(guide);
    }
}

void GuideValues::add(const Guide& guide)
{
    std::array<std::string_view, 4> words;
    std::string_view rest = guide.formula;
    for (std::string_view& word : words) {
        rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
        word = rest.substr(0, rest.find(' '));
        rest.remove_prefix(word.size());
    }
    m_values[guide.name] = bounded(result(words[0], value(words[1]), value(words[2]), value(words[3])));
}

double GuideValues::value(std::string_view text) const
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size())
        return bounded(number);
    return value(text, 0);
}

double GuideValues::value(std::string_view name, double otherwise) const
{
    const auto place = m_values.find(std::string(name));
    return place != m_values.end() ? place->second : otherwise;
}

} // namespace lumivane::engine
