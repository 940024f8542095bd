#include "thresholds/ThresholdFormula.h"

#include "platform/Checked.h"

#include <QStringList>
#include <cmath>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// Deeper than anybody writes, shallow enough for any stack.
constexpr int deepestParentheses = 64;

struct FormulaFault
{
    QString sentence;
};

/// Reads a formula by the precedence of spreadsheets: signs bind closest, then %, ^, * and /, + and -, comparisons.
class ComparisonReader
{
public:
    explicit ComparisonReader(const QString& formula) : m_formula(formula)
    {
        if (peek() == u'=')
            ++m_at;
    }

    bool holds()
    {
        const double left = sum();
        const QString sign = comparisonSign();
        if (sign.isEmpty()) {
            expectEnd();
            return left != 0;
        }
        const double right = sum();
        expectEnd();
        return compare(left, sign, right);
    }

private:
    static bool compare(double left, const QString& sign, double right)
    {
        if (sign == u"=")
            return left == right;
        if (sign == u"<>")
            return left != right;
        if (sign == u"<")
            return left < right;
        if (sign == u"<=")
            return left <= right;
        return sign == u">" ? left > right : left >= right;
    }

    QString comparisonSign()
    {
        static const QStringList signs{u"<="_s, u">="_s, u"<>"_s, u"<"_s, u">"_s, u"="_s};
        peek();
        for (const QString& sign : signs) {
            if (QStringView(m_formula).sliced(m_at).startsWith(sign)) {
                m_at += sign.size();
                return sign;
            }
        }
        return {};
    }

    double sum()
    {
        double value = product();
        for (;;) {
            if (accept(u'+'))
                value += product();
            else if (accept(u'-'))
                value -= product();
            else
                return value;
        }
    }

    double product()
    {
        double value = power();
        for (;;) {
            if (accept(u'*')) {
                value *= power();
            } else if (accept(u'/')) {
                const double divisor = power();
                if (divisor == 0)
                    throw FormulaFault{u"the formula [%1] divides by zero"_s.arg(m_formula.trimmed())};
                value /= divisor;
            } else {
                return value;
            }
        }
    }

    double power()
    {
        double value = percent();
        while (accept(u'^'))
            value = std::pow(value, percent());
        if (!std::isfinite(value))
            throw FormulaFault{u"the formula [%1] gives no number"_s.arg(m_formula.trimmed())};
        return value;
    }

    double percent()
    {
        double value = signedNumber();
        while (accept(u'%'))
            value /= 100;
        return value;
    }

    double signedNumber()
    {
        bool negative = false;
        for (;;) {
            if (accept(u'-'))
                negative = !negative;
            else if (!accept(u'+'))
                break;
        }
        const double value = accept(u'(') ? inParentheses() : number();
        return negative ? -value : value;
    }

    double inParentheses()
    {
        if (++m_depth > deepestParentheses)
            refuse(u"too many parentheses stand within each other"_s);
        const double value = sum();
        if (!accept(u')'))
            refuse(u"a closing parenthesis is missing"_s);
        --m_depth;
        return value;
    }

    double number()
    {
        peek();
        const qsizetype start = m_at;
        skipDigits();
        qsizetype digits = m_at - start;
        if (at(m_at) == u'.') {
            const qsizetype point = m_at++;
            skipDigits();
            digits += m_at - point - 1;
        }
        if (digits == 0) {
            m_at = start;
            refuse(u"a number is expected"_s);
        }
        skipExponent();
        const double value = QStringView(m_formula).sliced(start, m_at - start).toDouble();
        if (!std::isfinite(value))
            refuse(u"the number is too large"_s);
        return value;
    }

    void skipDigits()
    {
        while (at(m_at) >= u'0' && at(m_at) <= u'9')
            ++m_at;
    }

    void skipExponent()
    {
        if (at(m_at).toLower() != u'e')
            return;
        const qsizetype mark = m_at++;
        if (at(m_at) == u'+' || at(m_at) == u'-')
            ++m_at;
        const qsizetype digits = m_at;
        skipDigits();
        if (m_at == digits)
            m_at = mark;
    }

    QChar at(qsizetype place) const { return place < m_formula.size() ? m_formula[place] : QChar(); }

    QChar peek()
    {
        while (m_at < m_formula.size() && m_formula[m_at].isSpace())
            ++m_at;
        return at(m_at);
    }

    bool accept(QChar sign)
    {
        if (peek() != sign || m_at >= m_formula.size())
            return false;
        ++m_at;
        return true;
    }

    void expectEnd()
    {
        peek();
        if (m_at < m_formula.size())
            refuse(u"only numbers and one comparison are understood"_s);
    }

    [[noreturn]] void refuse(const QString& reason)
    {
        const QString rest = m_formula.sliced(m_at).trimmed().left(20);
        throw FormulaFault{u"the formula [%1] is not understood at "_s.arg(m_formula.trimmed().left(80)) +
                           (rest.isEmpty() ? u"its end"_s : QString(u'[' + rest + u']')) + u": "_s + reason};
    }

    const QString& m_formula;
    qsizetype m_at = 0;
    int m_depth = 0;
};

} // namespace

Result<bool> evaluateComparison(const QString& formula)
{
    try {
        return ComparisonReader(formula).holds();
    } catch (const FormulaFault& fault) {
        return Failure{fault.sentence};
    }
}

QString comparisonFault(const QString& comparison)
{
    const auto tried = evaluateComparison(u"= "_s + plainNumber(1) + comparison);
    if (!tried)
        return tried.reason();
    // "00>5" would complete the number itself.
    const QString start = comparison.trimmed().left(1);
    if (start.isEmpty() || start[0].isDigit() || start == u"." || start.compare(u"e", Qt::CaseInsensitive) == 0)
        return u"the comparison [%1] does not begin with a sign such as > or <"_s.arg(comparison);
    return {};
}

} // namespace lumivane
