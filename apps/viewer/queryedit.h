// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/queryerror.h>

#include <QPlainTextEdit>

QT_BEGIN_NAMESPACE
class QCompleter;
class QStringListModel;
QT_END_NAMESPACE

namespace lorix::viewer {

/// A line for a query: completes attributes and operators, and underlines what
/// is wrong as one types.
class QueryEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit QueryEdit(QWidget* parent = nullptr);

    QString query() const { return toPlainText(); }
    void setQuery(const QString& query);
    /// The complaints about the text as it stands; none for an empty one.
    const QList<QueryError>& errors() const { return m_errors; }
    /// Names of attributes that the author of the document has given.
    void setUserAttributes(const QStringList& names);
    QCompleter* completer() const { return m_completer; }

    /// What could stand in place of the word that ends at the end of `text`.
    QStringList completionsFor(const QString& text) const;

Q_SIGNALS:
    /// Return was pressed.
    void submitted();
    /// The text and the complaints about it have changed.
    void checked();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void check();
    void complete(bool forced);
    void insertCompletion(const QString& completion);
    QString textBeforeCursor() const;

    QCompleter* m_completer;
    QStringListModel* m_words;
    QStringList m_userAttributes;
    QList<QueryError> m_errors;
};

} // namespace lorix::viewer
