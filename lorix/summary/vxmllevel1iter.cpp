// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/elementscan.h>
#include <lorix/summary/vxmllevel1iter.h>

#include <QIODevice>
#include <QTextStream>

namespace lorix {

namespace {

template <typename Number>
bool readThree(QString text, Number& a, Number& b, Number& c)
{
    QTextStream stream(&text, QIODevice::ReadOnly);
    stream >> a >> b >> c;
    return stream.status() == QTextStream::Ok;
}

} // namespace

VXMLLevel1Iter::VXMLLevel1Iter(const QString& text)
{
    Init(text);
}

VXMLLevel1Iter& VXMLLevel1Iter::operator=(const QString& text)
{
    Init(text);
    return *this;
}

bool VXMLLevel1Iter::Init(const QString& text)
{
    // A deep copy: getNextDataBlock() lets its caller write into it.
    m_text = QString(text.constData(), text.size());
    m_position = 0;
    m_ended = false;
    return advance();
}

void VXMLLevel1Iter::Copy(const VXMLLevel1Iter& other)
{
    *this = other;
}

QString VXMLLevel1Iter::operator++()
{
    advance();
    return getData();
}

QString VXMLLevel1Iter::operator++(int)
{
    return ++*this;
}

bool VXMLLevel1Iter::isTag(const QString& name) const
{
    return m_valid && QStringView(m_text).sliced(m_tagStart, m_tagLength) == name;
}

QString VXMLLevel1Iter::getTag() const
{
    return m_valid ? m_text.sliced(m_tagStart, m_tagLength) : QString();
}

QString VXMLLevel1Iter::getData() const
{
    return m_valid ? m_text.sliced(m_dataStart, m_dataEnd - m_dataStart) : QString();
}

QString VXMLLevel1Iter::getTagAndData() const
{
    return QStringLiteral("<%1>%2</%1>").arg(getTag(), getData());
}

QString VXMLLevel1Iter::replaceCurrentTag(const QString& text) const
{
    QString whole = m_text;
    if (m_valid)
        whole.replace(m_dataStart, m_dataEnd - m_dataStart, text);
    return whole;
}

bool VXMLLevel1Iter::dataTo3Int(int& a, int& b, int& c) const
{
    return readThree(getData(), a, b, c);
}

bool VXMLLevel1Iter::dataTo3Double(double& a, double& b, double& c) const
{
    return readThree(getData(), a, b, c);
}

bool VXMLLevel1Iter::getNextDataBlock(QChar** data, int* length)
{
    const bool found = advance();
    *data = found ? m_text.data() + m_dataStart : nullptr;
    *length = found ? static_cast<int>(m_dataEnd - m_dataStart) : 0;
    return found;
}

bool VXMLLevel1Iter::advance()
{
    m_valid = false;
    if (m_ended)
        return false;
    const auto element = findElement(m_text, m_position);
    m_ended = !element;
    if (!element)
        return false;
    m_valid = true;
    m_tagStart = element->tagStart;
    m_tagLength = element->tagLength;
    m_dataStart = element->contentStart;
    m_dataEnd = element->contentEnd;
    m_position = element->end;
    return true;
}

} // namespace lorix
