// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

namespace lorix {

/// Walks forwards over the first-level elements of a piece of XML-like text:
///
///     for (VXMLLevel1Iter element(text); element; ++element)
///         if (element.isTag(QStringLiteral("Title")))
///             title = element.getData();
///
/// This is no XML parser. A tag's text is whatever stands between "<" and ">";
/// attributes, entities and namespaces have no meaning. The content of an
/// element is the raw text up to the closing tag that balances it: elements of
/// the same name may nest in it, all else in it is not looked at. "<name/>" is
/// an element without content. Comments ("<!" to "-->") and processing
/// instructions ("<?" to "?>") between elements are passed over, and so is
/// text. The walk ends for good at the end of the text and at the first thing
/// that is malformed: a "<" without ">", an unended comment or instruction, a
/// closing tag where an element could begin, an element that is not closed (as
/// any with attributes in its tag).
///
/// The iterator holds a copy of the text. A walk takes time proportional to the
/// text's length.
class LORIX_EXPORT VXMLLevel1Iter
{
public:
    /// Stands on nothing.
    VXMLLevel1Iter() = default;

    /// Stands on the first element of `text`; on nothing where there is none.
    VXMLLevel1Iter(const QString& text);

    /// A copy stands where the original stands and walks on by itself.
    VXMLLevel1Iter(const VXMLLevel1Iter& other) = default;
    VXMLLevel1Iter& operator=(const VXMLLevel1Iter& other) = default;
    ~VXMLLevel1Iter() = default;

    /// Begins again with `text`, as the constructor does.
    VXMLLevel1Iter& operator=(const QString& text);

    /// The same; true when the iterator stands on an element.
    bool Init(const QString& text);

    /// The same as assigning `other`.
    void Copy(const VXMLLevel1Iter& other);

    /// True while the iterator stands on an element.
    bool isValid() const { return m_valid; }
    explicit operator bool() const { return m_valid; }

    /// Goes to the next element and returns its content; empty when there is
    /// none, which isValid() tells from an element without content. Both forms
    /// do the same.
    QString operator++();
    QString operator++(int);

    /// True on an element whose tag text is exactly `name`.
    bool isTag(const QString& name) const;

    /// The current element's tag text, without the "/" of an empty element;
    /// empty when there is no element.
    QString getTag() const;

    /// The current element's content, as it stands in the text; empty when
    /// there is no element.
    QString getData() const;

    /// The current element as "<tag>content</tag>"; "<></>" when there is none.
    QString getTagAndData() const;

    /// The whole text with the current element's content replaced by `text`;
    /// unchanged when there is no element. In an element "<name/>" the content
    /// has its place behind the tag. The iterator itself stays as it is.
    QString replaceCurrentTag(const QString& text) const;

    /// Reads three numbers parted by blanks from the current content, as
    /// QTextStream does it (so "0x10" is 16). False when one cannot be read.
    bool dataTo3Int(int& a, int& b, int& c) const;
    bool dataTo3Double(double& a, double& b, double& c) const;

    /// Goes to the next element, as operator++() does, and gives its content
    /// as a place in the iterator's own copy of the text, which stays until
    /// the iterator is changed, and its length in characters. False, with null
    /// and 0, when there is no further element.
    bool getNextDataBlock(QChar** data, int* length);

private:
    bool advance();

    QString m_text;
    qsizetype m_position = 0;
    bool m_valid = false;
    bool m_ended = true;
    qsizetype m_tagStart = 0;
    qsizetype m_tagLength = 0;
    qsizetype m_dataStart = 0;
    qsizetype m_dataEnd = 0;
};

} // namespace lorix
