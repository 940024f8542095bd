#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace lumivane {

/// The run-time failure that a procedure raises and that the procedure with a trap catches.
/// The numbers are the well-known ones that stand in log files, so that old and new logs can be read together.
class RuntimeError : public std::exception
{
public:
    enum Number {
        Overflow = 6,
        SubscriptOutOfRange = 9,
        TypeMismatch = 13,
        FileNotFound = 53,
        PathAccess = 75,
        PathNotFound = 76,
        ObjectNotSet = 91,
        InvalidUseOfNull = 94,
        ApplicationDefined = 1004, ///< what a spreadsheet host refuses: a bad address, an unknown name
    };

    RuntimeError(int number, QString description);
    /// With the customary description of that number.
    explicit RuntimeError(Number number);

    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

} // namespace lumivane
