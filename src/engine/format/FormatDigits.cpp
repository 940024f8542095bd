#include "engine/format/FormatDigits.h"

#include "engine/format/Decimal.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

using Parts = std::vector<FormatPart>;

bool isDigitPart(const FormatPart& part)
{
    return part.kind == PartKind::Digit;
}

int countDigitParts(const Parts& parts)
{
    return static_cast<int>(std::count_if(parts.begin(), parts.end(), isDigitPart));
}

/// Collects the text of a section and remembers where a fill stands.
class DigitsWriter
{
public:
    explicit DigitsWriter(const Numerals& numerals) : m_numerals(numerals) {}

    void literal(const FormatPart& part)
    {
        if (part.kind == PartKind::Fill) {
            m_result.fillPosition = static_cast<int>(m_result.text.size());
            m_result.fill = part.letter;
        } else {
            m_result.text += part.text;
        }
    }
    void append(const QString& text) { m_result.text += text; }
    void appendDigits(const QString& digits) { m_result.text += m_numerals.digits(digits); }
    void appendGeneral(const QString& number) { m_result.text += m_numerals.general(number); }
    FormattedText take() { return std::move(m_result); }

    void integer(const Parts& parts, const QByteArray& digits, bool thousands);
    void decimals(const Parts& parts, const QByteArray& digits);

private:
    Numerals m_numerals;
    FormattedText m_result;
};

QChar emptyPlace(QChar letter)
{
    return letter == u'0' ? u'0' : letter == u'?' ? u' ' : QChar();
}

/// Digits from the right into their places; those beyond the first place go in front of it.
void DigitsWriter::integer(const Parts& parts, const QByteArray& digits, bool thousands)
{
    const int places = countDigitParts(parts);
    int place = places; // digits still to come, counted from the point
    const int length = static_cast<int>(digits.size());
    const auto put = [&](QChar c, int position, bool real) {
        if (c.isNull())
            return;
        m_result.text += m_numerals.digit(c);
        if (thousands && position > 0 && position % 3 == 0)
            m_result.text += real ? u',' : u' ';
    };
    bool first = true;
    for (const FormatPart& part : parts) {
        if (!isDigitPart(part)) {
            literal(part);
            continue;
        }
        if (first)
            for (int position = length - 1; position >= places; --position)
                put(QLatin1Char(digits[length - 1 - position]), position, true);
        first = false;
        --place;
        if (place < length)
            put(QLatin1Char(digits[length - 1 - place]), place, true);
        else
            put(emptyPlace(part.letter), place, part.letter == u'0');
    }
}

void DigitsWriter::decimals(const Parts& parts, const QByteArray& digits)
{
    qsizetype shown = digits.size();
    while (shown > 0 && digits[shown - 1] == '0')
        --shown;
    qsizetype place = 0;
    for (const FormatPart& part : parts) {
        if (!isDigitPart(part)) {
            literal(part);
            continue;
        }
        const QChar c = place < shown ? QChar(QLatin1Char(digits[place])) : emptyPlace(part.letter);
        if (!c.isNull())
            m_result.text += m_numerals.digit(c);
        ++place;
    }
}

/// The parts of a section up to the point, behind it and behind the exponent sign.
struct NumberLayout
{
    Parts integer, decimals, exponent;
    bool hasPoint = false;
    const FormatPart* exponentSign = nullptr;
    Numerals numerals;

    explicit NumberLayout(const FormatSection& section) : numerals(section.numerals)
    {
        Parts* target = &integer;
        for (const FormatPart& part : section.parts) {
            if (part.kind == PartKind::Point && !hasPoint && !exponentSign) {
                hasPoint = true;
                target = &decimals;
            } else if (part.kind == PartKind::Exponent && !exponentSign) {
                exponentSign = &part;
                target = &exponent;
            } else if (part.kind == PartKind::Point || part.kind == PartKind::Exponent) {
                target->push_back({PartKind::Literal, part.text + part.letter, {}, 0});
            } else {
                target->push_back(part);
            }
        }
    }
};

FormattedText plainNumber(const NumberLayout& layout, Decimal value, bool thousands, bool& allZero)
{
    const int decimals = countDigitParts(layout.decimals);
    value.round(decimals);
    allZero = value.isZero();
    DigitsWriter writer(layout.numerals);
    writer.integer(layout.integer, value.integerDigits(), thousands);
    if (layout.hasPoint)
        writer.append(u"."_s);
    writer.decimals(layout.decimals, value.decimalDigits(decimals));
    return writer.take();
}

int floorToMultiple(int number, int step)
{
    const int rest = ((number % step) + step) % step;
    return number - rest;
}

FormattedText exponentialNumber(const NumberLayout& layout, Decimal value, bool& allZero)
{
    // Several places in front of the point make exponents that are multiples of their number.
    const int places = std::max(countDigitParts(layout.integer), 1);
    const int decimals = countDigitParts(layout.decimals);
    allZero = value.isZero();
    int exponent = value.isZero() ? 0 : floorToMultiple(value.exponent(), places);
    Decimal mantissa = value;
    mantissa.shift(-exponent);
    mantissa.round(decimals);
    if (mantissa.exponent() >= places) { // rounded up to the next power
        exponent += places;
        mantissa.shift(-places);
    }
    DigitsWriter writer(layout.numerals);
    writer.integer(layout.integer, mantissa.integerDigits(), false);
    if (layout.hasPoint)
        writer.append(u"."_s);
    writer.decimals(layout.decimals, mantissa.decimalDigits(decimals));
    writer.append(layout.exponentSign->text);
    if (exponent < 0)
        writer.append(u"-"_s);
    else if (layout.exponentSign->letter == u'+')
        writer.append(u"+"_s);
    writer.integer(layout.exponent, exponent == 0 ? QByteArray() : QByteArray::number(std::abs(exponent)), false);
    return writer.take();
}

struct Ratio
{
    qint64 numerator = 0, denominator = 1;
};

/// The fraction nearest to a value between 0 and 1 with a denominator up to a bound: convergents of the continued
/// fraction, and the last step as far as the bound allows.
Ratio nearestRatio(double value, qint64 maxDenominator)
{
    Ratio before{0, 1}, last{1, 0};
    double rest = value;
    for (int step = 0; step < 40; ++step) {
        const double whole = std::floor(rest + 1e-11);
        const double limit =
            last.denominator == 0 ? whole : double(maxDenominator - before.denominator) / double(last.denominator);
        if (whole > limit) {
            const qint64 part = static_cast<qint64>(std::floor(limit));
            const Ratio between{part * last.numerator + before.numerator, part * last.denominator + before.denominator};
            const auto distance = [&](const Ratio& r) {
                return std::fabs(value - double(r.numerator) / double(r.denominator));
            };
            return between.denominator > 0 && distance(between) < distance(last) ? between : last;
        }
        const qint64 part = static_cast<qint64>(whole);
        const Ratio next{part * last.numerator + before.numerator, part * last.denominator + before.denominator};
        before = last;
        last = next;
        rest -= whole;
        if (std::fabs(rest) < 1e-10)
            break;
        rest = 1 / rest;
    }
    return last;
}

/// The parts of "# ?/?": whole number, numerator, denominator, with what stands between and behind.
struct FractionLayout
{
    Parts whole, between, numerator, denominator, behind;
    qint64 fixedDenominator = 0;
    Numerals numerals;

    explicit FractionLayout(const FormatSection& section) : numerals(section.numerals)
    {
        const Parts& parts = section.parts;
        const auto slash = std::find_if(parts.begin(), parts.end(),
                                        [](const FormatPart& part) { return part.kind == PartKind::Slash; });
        auto first = slash;
        while (first != parts.begin() && isDigitPart(*(first - 1)))
            --first;
        numerator.assign(first, slash);
        const auto lastWhole = std::find_if(std::make_reverse_iterator(first), parts.rend(), isDigitPart).base();
        if (std::any_of(parts.begin(), first, isDigitPart)) {
            whole.assign(parts.begin(), lastWhole);
            between.assign(lastWhole, first);
        } else {
            between.assign(parts.begin(), first);
        }
        auto end = slash + 1;
        QString fixed;
        for (; end != parts.end(); ++end) {
            const bool digit = isDigitPart(*end);
            const bool number = end->kind == PartKind::Literal && end->text.size() == 1 && end->text[0].isDigit();
            if (!digit && !number)
                break;
            fixed += digit ? QString(end->letter) : end->text;
            denominator.push_back({PartKind::Digit, {}, digit ? end->letter : u'0', 0});
        }
        behind.assign(end, parts.end());
        bool isNumber = false;
        fixedDenominator = fixed.left(9).toLongLong(&isNumber);
        if (!isNumber)
            fixedDenominator = 0;
    }
};

QString blanksFor(const Parts& parts)
{
    QString blanks;
    for (const FormatPart& part : parts)
        blanks += isDigitPart(part) ? u" "_s : QString(part.text.size(), u' ');
    return blanks;
}

FormattedText fractionNumber(const FractionLayout& layout, double magnitude, bool& allZero)
{
    if (!std::isfinite(magnitude))
        magnitude = 0;
    const double whole = std::floor(magnitude);
    const int places = std::min(countDigitParts(layout.denominator), 7);
    const qint64 bound = static_cast<qint64>(std::pow(10.0, places)) - 1;
    Ratio ratio;
    if (layout.fixedDenominator > 0)
        ratio = {std::llround((magnitude - whole) * double(layout.fixedDenominator)), layout.fixedDenominator};
    else
        ratio = nearestRatio(magnitude - whole, std::max<qint64>(bound, 1));
    double shownWhole = whole;
    if (ratio.numerator == ratio.denominator) {
        shownWhole += 1;
        ratio = {0, layout.fixedDenominator > 0 ? layout.fixedDenominator : 1};
    }
    const bool mixed = !layout.whole.empty();
    allZero = shownWhole == 0 && ratio.numerator == 0;

    DigitsWriter writer(layout.numerals);
    Decimal wholeDigits(mixed ? shownWhole : 0);
    wholeDigits.round(0);
    const bool showWhole = shownWhole != 0 || ratio.numerator == 0;
    QByteArray digits = wholeDigits.integerDigits();
    if (mixed && digits.isEmpty() && showWhole)
        digits = "0";
    writer.integer(layout.whole, digits, false);
    if (mixed && ratio.numerator == 0) {
        writer.append(blanksFor(layout.between) + blanksFor(layout.numerator) + u' ' + blanksFor(layout.denominator));
    } else {
        for (const FormatPart& part : layout.between)
            writer.literal(part);
        const double numerator = double(ratio.numerator) + (mixed ? 0 : shownWhole * double(ratio.denominator));
        Decimal numeratorDigits(numerator);
        numeratorDigits.round(0);
        const QByteArray shown = numeratorDigits.integerDigits();
        writer.integer(layout.numerator, shown.isEmpty() ? QByteArray("0") : shown, false);
        writer.append(u"/"_s);
        // Denominators stand at the left of their places.
        const QString denominator = QString::number(ratio.denominator);
        const bool zeros = !layout.denominator.empty() && layout.denominator.front().letter == u'0';
        const int width = countDigitParts(layout.denominator);
        const bool blanks = !layout.denominator.empty() && layout.denominator.front().letter == u'?';
        writer.appendDigits(zeros    ? denominator.rightJustified(width, u'0')
                            : blanks ? denominator.leftJustified(width, u' ')
                                     : denominator);
    }
    for (const FormatPart& part : layout.behind)
        writer.literal(part);
    return writer.take();
}

FormattedText literalsOnly(const FormatSection& section, double magnitude, int generalChars)
{
    DigitsWriter writer(section.numerals);
    for (const FormatPart& part : section.parts) {
        if (part.kind == PartKind::General || part.kind == PartKind::TextPlace)
            writer.appendGeneral(generalNumber(magnitude, generalChars));
        else if (part.kind == PartKind::Point)
            writer.append(u"."_s);
        else
            writer.literal(part);
    }
    return writer.take();
}

} // namespace

FormattedText digitsText(const FormatSection& section, double magnitude, int generalChars, bool& allZero)
{
    allZero = magnitude == 0;
    if (!section.hasDigits() || section.hasGeneral)
        return literalsOnly(section, magnitude, generalChars);
    if (section.isFraction())
        return fractionNumber(FractionLayout(section), magnitude * std::pow(10.0, section.powerOfTen), allZero);
    Decimal value(magnitude);
    value.shift(section.powerOfTen);
    const NumberLayout layout(section);
    return layout.exponentSign ? exponentialNumber(layout, value, allZero)
                               : plainNumber(layout, value, section.thousands, allZero);
}

} // namespace lumivane::engine
