// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/queryedit.h>

#include <apps/viewer/colours.h>

#include <lorix/query/queryparser.h>
#include <lorix/query/querytypes.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextEdit>

#include <algorithm>
#include <utility>

namespace lorix::viewer {

namespace {

// The word that is being typed: "s:ti", "%con", "s:user{am".
QString openWord(const QString& text)
{
    static const QRegularExpression word(
        QStringLiteral("([a-zA-Z]*:user\\{[^}]*|[a-zA-Z]*:[a-zA-Z0-9]*|%[a-z]*)$"));
    return word.match(text).captured();
}

} // namespace

QueryEdit::QueryEdit(QWidget* parent)
    : QPlainTextEdit(parent), m_completer(new QCompleter(this)), m_words(new QStringListModel(this))
{
    setLineWrapMode(NoWrap);
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFixedHeight(fontMetrics().height() + 2 * static_cast<int>(document()->documentMargin()) +
                   2 * frameWidth() + 4);
    setPlaceholderText(tr("A word to look for, or a query such as  s:tool == 'python'"));
    setAccessibleName(tr("Query"));
    setObjectName(QStringLiteral("queryEdit"));
    m_completer->setModel(m_words);
    m_completer->setWidget(this);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this,
            &QueryEdit::insertCompletion);
    connect(this, &QPlainTextEdit::textChanged, this, &QueryEdit::check);
}

void QueryEdit::setQuery(const QString& query)
{
    setPlainText(query);
    moveCursor(QTextCursor::End);
}

void QueryEdit::setUserAttributes(const QStringList& names)
{
    m_userAttributes = names;
    m_userAttributes.removeDuplicates();
    m_userAttributes.sort();
}

QStringList QueryEdit::completionsFor(const QString& text) const
{
    const QString word = openWord(text);
    QStringList all;
    if (word.startsWith(QLatin1Char('%'))) {
        all = {QStringLiteral("%contains "), QStringLiteral("%matches "),
               QStringLiteral("%isapprox ")};
    } else if (!word.isEmpty()) {
        const QString variable = word.left(word.indexOf(QLatin1Char(':')) + 1);
        QStringList names = getAttributeTypes().keys();
        names.sort();
        for (const QString& name : std::as_const(names))
            all.append(variable + name);
        for (const QString& name : m_userAttributes)
            all.append(variable + QStringLiteral("user{") + name + QLatin1Char('}'));
    }
    QStringList fitting;
    for (const QString& candidate : std::as_const(all))
        if (candidate.startsWith(word, Qt::CaseInsensitive) && candidate != word)
            fitting.append(candidate);
    return fitting;
}

QString QueryEdit::textBeforeCursor() const
{
    return toPlainText().left(textCursor().position());
}

// Only the first stage that finds something wrong speaks; its places are marked.
void QueryEdit::check()
{
    m_errors.clear();
    const QString text = query();
    if (!text.trimmed().isEmpty())
        parseQuery(text, m_errors);
    QList<QTextEdit::ExtraSelection> marks;
    const int length = static_cast<int>(text.size());
    for (const QueryError& error : std::as_const(m_errors)) {
        QTextEdit::ExtraSelection mark;
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(alarmColour(palette()));
        // What is missing at the end is marked at the last character.
        const int from = std::clamp(error.position(), 0, std::max(0, length - 1));
        const int to = std::clamp(error.position() + std::max(1, error.length()), from, length);
        mark.cursor = QTextCursor(document());
        mark.cursor.setPosition(from);
        mark.cursor.setPosition(to, QTextCursor::KeepAnchor);
        marks.append(mark);
    }
    setExtraSelections(marks);
    Q_EMIT checked();
}

void QueryEdit::complete(bool forced)
{
    QString before = textBeforeCursor();
    if (forced && openWord(before).isEmpty())
        before += QLatin1Char(':');
    const QStringList words = completionsFor(before);
    if (words.isEmpty()) {
        m_completer->popup()->hide();
        return;
    }
    m_words->setStringList(words);
    QRect where = cursorRect();
    where.setWidth(m_completer->popup()->sizeHintForColumn(0) +
                   m_completer->popup()->verticalScrollBar()->sizeHint().width() + 24);
    m_completer->complete(where);
    m_completer->popup()->setCurrentIndex(m_completer->completionModel()->index(0, 0));
}

void QueryEdit::insertCompletion(const QString& completion)
{
    QTextCursor cursor = textCursor();
    const QString word = openWord(textBeforeCursor());
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, static_cast<int>(word.size()));
    cursor.insertText(completion);
    setTextCursor(cursor);
}

void QueryEdit::keyPressEvent(QKeyEvent* event)
{
    const bool popup = m_completer->popup()->isVisible();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        // The list of completions takes these keys while it is open.
        if (popup) {
            event->ignore();
            return;
        }
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            Q_EMIT submitted();
            return;
        }
        break;
    case Qt::Key_Space:
        if (event->modifiers() & Qt::ControlModifier) {
            complete(true);
            return;
        }
        break;
    default:
        break;
    }
    QPlainTextEdit::keyPressEvent(event);
    if (!event->text().isEmpty() && event->text().at(0).isPrint())
        complete(false);
    else if (popup && event->key() == Qt::Key_Backspace)
        complete(false);
}

void QueryEdit::insertFromMimeData(const QMimeData* source)
{
    textCursor().insertText(source->text().simplified());
}

} // namespace lorix::viewer
