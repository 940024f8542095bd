#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <stdexcept>

namespace lumivane {

/// The call does not fit the command: exit status 2, and its usage is shown.
struct UsageError : std::runtime_error
{
    explicit UsageError(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

/// What a command's call may hold.
struct CommandForm
{
    QStringList options;                     ///< names without dashes; each takes a value
    QStringList required;                    ///< those of the options that must be given
    QStringList flags;                       ///< take no value
    QMap<QString, QStringList> choices = {}; ///< the values that an option allows, for those that allow few
    qsizetype leastArguments = 0, mostArguments = 0;
};

/// The words of a call sorted out: options may stand anywhere, `--` ends them. Throws UsageError naming the word that
/// does not fit.
class CommandLine
{
public:
    CommandLine(const QStringList& words, const CommandForm& form);

    /// Counted from 0; empty beyond the last.
    QString argument(qsizetype index) const { return m_arguments.value(index); }
    QStringList argumentsFrom(qsizetype index) const { return m_arguments.mid(index); }
    QString option(const QString& name, const QString& otherwise = {}) const
    {
        return m_options.value(name, otherwise);
    }
    bool flag(const QString& name) const { return m_flags.contains(name); }
    /// An option's value as a number within bounds, both allowed.
    double number(const QString& name, double otherwise, double least, double most) const;

private:
    QStringList m_arguments;
    QMap<QString, QString> m_options;
    QStringList m_flags;
};

} // namespace lumivane
