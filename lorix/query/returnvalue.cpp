// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/returnvalue.h>

#include <QStringView>

const QString dateRegstr = QStringLiteral("(?:([0-9]{2}|[0-9]{4})-([0-9]{1,2})-([0-9]{1,2}))");
const QString timeRegstr = QStringLiteral("(?:([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?)");

namespace lorix {

namespace {

bool isDigit(QStringView text, qsizetype i)
{
    return i < text.size() && text[i] >= u'0' && text[i] <= u'9';
}

bool isSign(QStringView text, qsizetype i)
{
    return i < text.size() && (text[i] == u'+' || text[i] == u'-');
}

bool isMantissa(QStringView text, qsizetype i)
{
    return isDigit(text, i) || (i < text.size() && (text[i] == u'.' || text[i] == u','));
}

// Length of the longest "[+-]?[0-9.,]+(e[+-]?[0-9]+)?" at the beginning, 0
// where there is none.
qsizetype numberLength(QStringView text)
{
    qsizetype end = isSign(text, 0) ? 1 : 0;
    if (!isMantissa(text, end))
        return 0;
    while (isMantissa(text, end))
        ++end;
    if (end == text.size() || text[end] != u'e')
        return end;
    qsizetype exponent = isSign(text, end + 1) ? end + 2 : end + 1;
    if (!isDigit(text, exponent))
        return end;
    while (isDigit(text, exponent))
        ++exponent;
    return exponent;
}

float takeUnit(QStringView& text)
{
    static constexpr struct
    {
        QStringView unit;
        float factor;
    } units[] = {{u"kb", 1024.0F}, {u"mb", 1048576.0F}, {u"gb", 1073741824.0F}};
    for (const auto& [unit, factor] : units) {
        if (text.endsWith(unit)) {
            text.chop(unit.size());
            return factor;
        }
    }
    return 1.0F;
}

// Reads the two patterns of the header from the beginning of a text, greedily,
// which gives what a longest match gives.
class DateReader
{
public:
    explicit DateReader(QStringView text) : m_text(text) {}

    bool readDate(QDate& date)
    {
        const qsizetype digits = countDigits(4);
        // Three digits are neither alternative of the year.
        if (digits == 3 || digits < 2)
            return false;
        const int year = take(digits);
        int month = 0;
        int day = 0;
        if (!readPart(u'-', month) || !readPart(u'-', day))
            return false;
        date = QDate(year, month, day);
        return true;
    }

    bool readBlanks()
    {
        const qsizetype begin = m_at;
        while (m_at < m_text.size() && m_text[m_at] == u' ')
            ++m_at;
        return m_at > begin;
    }

    bool readTime(QTime& time)
    {
        const qsizetype digits = countDigits(2);
        if (digits == 0)
            return false;
        const int hour = take(digits);
        int minute = 0;
        int second = 0;
        if (!readPart(u':', minute))
            return false;
        readPart(u':', second);
        time = QTime(hour, minute, second, 0);
        return true;
    }

private:
    qsizetype countDigits(qsizetype most) const
    {
        qsizetype count = 0;
        while (count < most && isDigit(m_text, m_at + count))
            ++count;
        return count;
    }

    int take(qsizetype digits)
    {
        const int value = m_text.mid(m_at, digits).toInt();
        m_at += digits;
        return value;
    }

    // A separator and one or two digits; stays in place where they are missing.
    bool readPart(char16_t separator, int& value)
    {
        if (m_at >= m_text.size() || m_text[m_at] != separator || !isDigit(m_text, m_at + 1))
            return false;
        ++m_at;
        value = take(countDigits(2));
        return true;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

QDateTime readDateTime(QStringView text)
{
    DateReader reader(text);
    QDate date;
    QTime time;
    if (reader.readDate(date)) {
        if (reader.readBlanks() && reader.readTime(time))
            return QDateTime(date, time);
        return QDateTime(date, QTime(0, 0));
    }
    if (DateReader(text).readTime(time))
        return QDateTime(QDate::currentDate(), time);
    return QDateTime();
}

void report(bool* ok, bool value)
{
    if (ok)
        *ok = value;
}

} // namespace

ReturnValue::ReturnValue(ReturnValueType valueType, const QString& valueText)
    : type(valueType), text(valueText)
{}

ReturnValue ReturnValue::fromBool(bool b)
{
    return ReturnValue(Boolean, b ? QStringLiteral("true") : QStringLiteral("false"));
}

ReturnValue ReturnValue::fromString(const QString& s)
{
    return ReturnValue(String, s);
}

ReturnValue ReturnValue::fromNumber(float f)
{
    return ReturnValue(String, QString::number(static_cast<double>(f), 'g', 6));
}

bool ReturnValue::isBool() const
{
    return type == Boolean;
}

bool ReturnValue::isString() const
{
    return type == String;
}

bool ReturnValue::isUnassignedVariable() const
{
    return type == UnassignedVariable;
}

bool ReturnValue::isValid() const
{
    return isBool() || isString();
}

bool ReturnValue::isNumber() const
{
    bool ok = false;
    toNumber(&ok);
    return ok;
}

bool ReturnValue::isDate() const
{
    bool ok = false;
    toDate(&ok);
    return ok;
}

QString ReturnValue::toString(bool* ok) const
{
    report(ok, isString());
    return isString() ? text : QString();
}

bool ReturnValue::toBool(bool* ok) const
{
    report(ok, isBool());
    return isBool() && text == QLatin1String("true");
}

float ReturnValue::toNumber(bool* ok) const
{
    const QString lower = text.toLower();
    QStringView rest = lower;
    const float factor = takeUnit(rest);
    const qsizetype length = numberLength(rest);
    if (length == 0) {
        report(ok, false);
        return 0.0F;
    }
    return rest.left(length).toFloat(ok) * factor;
}

QDateTime ReturnValue::toDate(bool* ok) const
{
    const QDateTime result = readDateTime(text);
    report(ok, result.isValid());
    // One with a time of day but no valid date would not be null.
    return result.isValid() ? result : QDateTime();
}

bool ReturnValue::operator==(const ReturnValue& other) const
{
    return type == other.type && text == other.text;
}

} // namespace lorix
