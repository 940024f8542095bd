#include "platform/RuntimeError.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QString customaryDescription(RuntimeError::Number number)
{
    switch (number) {
    case RuntimeError::Overflow:
        return u"Overflow"_s;
    case RuntimeError::SubscriptOutOfRange:
        return u"Subscript out of range"_s;
    case RuntimeError::TypeMismatch:
        return u"Type mismatch"_s;
    case RuntimeError::FileNotFound:
        return u"File not found"_s;
    case RuntimeError::PathAccess:
        return u"Path or file access error"_s;
    case RuntimeError::PathNotFound:
        return u"Path not found"_s;
    case RuntimeError::ObjectNotSet:
        return u"Object not set"_s;
    case RuntimeError::InvalidUseOfNull:
        return u"Invalid use of Null"_s;
    case RuntimeError::ApplicationDefined:
        break;
    }
    return u"The spreadsheet host refused the request"_s;
}

} // namespace

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number), m_description(std::move(description)), m_what(m_description.toUtf8())
{
}

RuntimeError::RuntimeError(Number number) : RuntimeError(number, customaryDescription(number)) {}

} // namespace lumivane
