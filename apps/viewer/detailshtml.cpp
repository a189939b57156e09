// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/detailshtml.h>

#include <apps/viewer/words.h>

#include <apps/lorix/text.h>

#include <lorix/container/lorixparser.h>

#include <QCoreApplication>
#include <QSet>

namespace lorix::viewer {

namespace {

const int longestText = 20000; // characters of one field
const int listedAttributes = 500;
const int listedFiles = 200; // on one page; the outline has them all

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Details)
};

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

// Line feeds that a person wrote are kept as such. A text may be of any length;
// a page is not.
QString paragraph(const QString& text)
{
    QString html = escaped(text.left(longestText));
    if (text.size() > longestText)
        html += QStringLiteral("<br><i>%1</i>")
                    .arg(escaped(Text::tr("… %1 characters in all").arg(text.size())));
    html.replace(QStringLiteral("\\n"), QStringLiteral("<br>"));
    return html;
}

QString row(const QString& label, const QString& html)
{
    if (html.isEmpty())
        return {};
    return QStringLiteral("<tr><td style='padding-right:14px'><b>%1</b></td><td>%2</td></tr>")
        .arg(escaped(label), html);
}

QString table(const QString& rows)
{
    if (rows.isEmpty())
        return {};
    return QStringLiteral(
               "<table cellspacing='0' cellpadding='2' style='margin-top:6px'>%1</table>")
        .arg(rows);
}

QString heading(const QString& text)
{
    return QStringLiteral("<h3>%1</h3>").arg(escaped(text));
}

QString stateSign(CheckState state)
{
    switch (state) {
    case CheckState::Valid:
        return QStringLiteral("✓");
    case CheckState::Damaged:
        return QStringLiteral("⚠");
    default:
        return QStringLiteral("○");
    }
}

QString stateLine(const Verdict& verdict)
{
    return QStringLiteral("<p>%1 <b>%2</b>: %3</p>")
        .arg(stateSign(verdict.state), escaped(stateName(verdict.state)), escaped(verdict.reason));
}

template <typename Record, typename Show>
QString attributes(const Record& record, const Show& show)
{
    QString rows;
    QSet<QString> seen;
    for (const QString& key : record.userAttributeKeys) {
        if (seen.contains(key))
            continue;
        if (seen.size() == listedAttributes) {
            rows += row(QStringLiteral("…"), escaped(Text::tr("there are more")));
            break;
        }
        seen.insert(key);
        QString value = paragraph(show(record.userAttributes.value(key)));
        const QString unit = record.userAttributeUnits.value(key);
        if (!unit.isEmpty())
            value += QStringLiteral(" ") + escaped(show(unit));
        rows += row(show(key).left(200), value.isEmpty() ? QStringLiteral("–") : value);
    }
    return rows.isEmpty() ? rows
                          : heading(Text::tr("Attributes given by the author")) + table(rows);
}

QString fileList(const History& history, const CheckResults& results, int node,
                 const QString& purpose, const QString& title)
{
    QString items;
    int count = 0;
    const QList<FileSummary>& files = history.step(node).step.files;
    for (int i = 0; i < files.size(); ++i) {
        const Place place{node, i};
        const bool other = purpose.isEmpty() &&
                           files.at(i).filePurpose != QLatin1String("InFile") &&
                           files.at(i).filePurpose != QLatin1String("OutFile");
        if ((!other && files.at(i).filePurpose != purpose) || history.isOwnSummary(place))
            continue;
        if (++count > listedFiles)
            continue;
        const Verdict verdict = results.of(history, place);
        QString line = QStringLiteral("<a href='%1'>%2</a>")
                           .arg(linkTo(place), escaped(history.fileName(place)));
        if (files.at(i).tagId < 0)
            line += QLatin1String(" – ") + escaped(Text::tr("not embedded"));
        else
            line += QStringLiteral(" – %1, %2 %3")
                        .arg(escaped(cli::humanSize(files.at(i).uncompressedSize)),
                             stateSign(verdict.state), escaped(stateName(verdict.state)));
        if (history.nestedIn(place) >= 0)
            line += QStringLiteral(" – ") + escaped(Text::tr("has a history of its own"));
        items += QStringLiteral("<li>%1</li>").arg(line);
    }
    if (count == 0)
        return {};
    if (count > listedFiles)
        items +=
            QStringLiteral("<li>%1</li>")
                .arg(
                    Text::tr("… and %1 more; the outline lists them all").arg(count - listedFiles));
    return heading(QStringLiteral("%1 (%2)").arg(title).arg(count)) +
           QStringLiteral("<ul style='margin-left:14px; -qt-list-indent:0'>%1</ul>").arg(items);
}

QString stepHtml(const History& history, const CheckResults& results, int node)
{
    const HistoryStep& entry = history.step(node);
    const Workflowstep& step = entry.step;
    const auto show = [&](const QString& text) { return history.stepText(node, text); };
    const auto shown = [&](const QString& text) { return paragraph(show(text)); };
    QString html = QStringLiteral("<h2>%1</h2>").arg(escaped(entry.title));
    html += stateLine(results.of(history, {node, -1}));
    if (entry.sectionless)
        html += QStringLiteral("<p>%1</p>")
                    .arg(escaped(Text::tr("These files are in the document, but no step says where "
                                          "they come from.")));
    QString rows;
    rows += row(Text::tr("Description"), shown(step.description));
    rows += row(Text::tr("When"), shown(step.timestamp));
    rows += row(Text::tr("By whom"), shown(step.user));
    rows += row(Text::tr("On which computer"), shown(step.host));
    rows += row(Text::tr("With which tool"), shown(step.tool));
    rows += row(Text::tr("Tool's place"), shown(step.toolPath));
    rows +=
        row(Text::tr("Command"), step.command.isEmpty()
                                     ? QString()
                                     : QStringLiteral("<code>%1</code>").arg(shown(step.command)));
    rows += row(Text::tr("Comment"), shown(step.comment));
    rows += row(Text::tr("Recorded by"), shown(step.creator));
    rows += row(Text::tr("Original document"), shown(step.lorixRootFile));
    rows += row(Text::tr("PDF title"), shown(step.pdfTitle));
    rows += row(Text::tr("PDF author"), shown(step.pdfAuthor));
    rows += row(Text::tr("PDF subject"), shown(step.pdfSubject));
    rows += row(Text::tr("PDF keywords"), shown(step.pdfKeywords));
    rows += row(Text::tr("PDF producer"), shown(step.pdfProducer));
    rows += row(Text::tr("PDF creator"), shown(step.pdfCreator));
    rows += row(Text::tr("Kept in"), escaped(history.containers().at(entry.container).name));
    html += table(rows);
    html += fileList(history, results, node, QStringLiteral("InFile"), Text::tr("Inputs"));
    html += fileList(history, results, node, QStringLiteral("OutFile"), Text::tr("Outputs"));
    html += fileList(history, results, node, QString(), Text::tr("Other files"));
    return html + attributes(step, show);
}

QString digest(const QString& text)
{
    return text.isEmpty() ? QString() : QStringLiteral("<code>%1</code>").arg(escaped(text));
}

QString flags(const FileSummary& file)
{
    QStringList words;
    if (file.preview || file.previewWS)
        words.append(Text::tr("preview picture"));
    if (file.thumbnail || file.thumbnailOnly)
        words.append(Text::tr("thumbnail"));
    return escaped(words.join(QStringLiteral(", ")));
}

QString fileHtml(const History& history, const CheckResults& results, const Place& place)
{
    const FileSummary& file = history.file(place);
    const auto show = [&](const QString& text) { return history.fileText(place, text); };
    const auto shown = [&](const QString& text) { return paragraph(show(text)); };
    QString html = QStringLiteral("<h2>%1</h2>").arg(escaped(history.fileName(place)));
    html += stateLine(results.of(history, place));
    QString rows;
    rows += row(Text::tr("What it is"),
                escaped(history.isOwnSummary(place)
                            ? Text::tr("The description of its step, for programs")
                            : purposeName(file.filePurpose)));
    rows += row(Text::tr("Step"),
                QStringLiteral("<a href='%1'>%2</a>")
                    .arg(linkTo({place.node, -1}), escaped(history.step(place.node).title)));
    rows += row(Text::tr("Description"), shown(file.description));
    rows += row(Text::tr("Comment"), shown(file.comment));
    rows += row(Text::tr("Type"), shown(file.filetype));
    rows += row(Text::tr("Size"), escaped(exactSize(file.uncompressedSize)));
    if (file.tagId >= 0)
        rows += row(Text::tr("Size in the document"),
                    escaped(exactSize(file.compressedSize)) +
                        (file.compressedMethod == QLatin1String("flate")
                             ? QStringLiteral(", ") + escaped(Text::tr("packed"))
                             : QString()));
    rows += row(Text::tr("Last changed"), shown(file.lastModified));
    rows += row(Text::tr("Was kept in"), shown(file.filepath));
    rows += row(Text::tr("Used as"), flags(file));
    rows += row(Text::tr("Fingerprint (MD5)"), digest(file.uncompressedMD5));
    rows += row(Text::tr("Fingerprint when packed"), digest(file.compressedMD5));
    html += table(rows);
    if (const int nested = history.nestedIn(place); nested >= 0) {
        const HistoryContainer& inner = history.containers().at(nested);
        html +=
            QStringLiteral("<p>%1 <a href='%2'>%3</a></p>")
                .arg(escaped(Text::tr("This file has a history of its own:")),
                     linkTo({inner.nodes.first(), -1}), escaped(Text::tr("go to its newest step")));
    }
    return html + attributes(file, show);
}

} // namespace

QString linkTo(const Place& place)
{
    return QStringLiteral("place:%1:%2").arg(place.node).arg(place.file);
}

Place placeOfLink(const QString& link)
{
    const QStringList parts = link.split(QLatin1Char(':'));
    if (parts.size() != 3 || parts.first() != QLatin1String("place"))
        return {};
    return {parts.at(1).toInt(), parts.at(2).toInt()};
}

QString detailsHtml(const History& history, const CheckResults& results, const Place& place)
{
    if (place.isNull())
        return overviewHtml(history, results);
    return place.isFile() ? fileHtml(history, results, place)
                          : stepHtml(history, results, place.node);
}

QString overviewHtml(const History& history, const CheckResults& results)
{
    const HistoryContainer& document = history.containers().first();
    QString html = QStringLiteral("<h2>%1</h2>").arg(escaped(cli::printable(history.name())));
    QString rows;
    rows += row(Text::tr("Size"), escaped(exactSize(document.bytes)));
    rows += row(Text::tr("Steps"), QString::number(document.parser->getNumSections()));
    rows += row(Text::tr("Files inside"), QString::number(document.parser->getNumFiles()));
    if (history.containers().size() > 1)
        rows += row(Text::tr("Documents inside"), QString::number(history.containers().size() - 1));
    html += table(rows);
    if (document.nodes.isEmpty())
        html += QStringLiteral("<p>%1</p>")
                    .arg(escaped(Text::tr("The document is prepared for a history, but no step has "
                                          "been recorded yet.")));
    else
        html +=
            QStringLiteral("<p>%1</p>")
                .arg(escaped(Text::tr("Choose a step or a file to see what is known about it.")));
    for (const Notice& notice : results.notices())
        html += QStringLiteral("<p>%1 %2</p>")
                    .arg(notice.isError ? QStringLiteral("⚠") : QStringLiteral("ℹ"),
                         escaped(notice.text));
    return html;
}

} // namespace lorix::viewer
