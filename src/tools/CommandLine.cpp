#include "tools/CommandLine.h"

namespace lumivane {

using namespace Qt::StringLiterals;

CommandLine::CommandLine(const QStringList& words, const CommandForm& form)
{
    bool optionsEnded = false;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words.at(i);
        if (optionsEnded || !word.startsWith(u"--"_s)) {
            m_arguments.append(word);
            continue;
        }
        const QString name = word.mid(2);
        if (name.isEmpty()) {
            optionsEnded = true;
        } else if (form.flags.contains(name)) {
            m_flags.append(name);
        } else if (!form.options.contains(name)) {
            throw UsageError(u"There is no option %1."_s.arg(word));
        } else if (i + 1 == words.size()) {
            throw UsageError(u"The option %1 needs a value."_s.arg(word));
        } else {
            const QString value = words.at(++i);
            if (const QStringList allowed = form.choices.value(name); !allowed.isEmpty() && !allowed.contains(value))
                throw UsageError(u"The option %1 takes %2, not %3."_s.arg(word, allowed.join(u" or "_s), value));
            m_options.insert(name, value);
        }
    }
    for (const QString& name : form.required)
        if (!m_options.contains(name))
            throw UsageError(u"The option --%1 is missing."_s.arg(name));
    if (m_arguments.size() < form.leastArguments)
        throw UsageError(u"This command needs more arguments: %1 at least, not %2."_s.arg(form.leastArguments)
                             .arg(m_arguments.size()));
    if (m_arguments.size() > form.mostArguments)
        throw UsageError(
            u"There are too many arguments: %1 is not expected."_s.arg(m_arguments.at(form.mostArguments)));
}

double CommandLine::number(const QString& name, double otherwise, double least, double most) const
{
    if (!m_options.contains(name))
        return otherwise;
    bool isNumber = false;
    const double value = m_options.value(name).toDouble(&isNumber);
    if (!isNumber || !(value >= least && value <= most))
        throw UsageError(u"The option --%1 takes a number from %2 to %3, not %4."_s.arg(name).arg(least).arg(most).arg(
            m_options.value(name)));
    return value;
}

} // namespace lumivane
