// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/findpanel.h>
#include <apps/viewer/queryedit.h>
#include <apps/viewer/translations.h>
#include <apps/viewer/verdictbar.h>

#include <QAction>
#include <QFile>
#include <QLocale>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QXmlStreamReader>
#include <QtTest>

using namespace lorix::viewer;

/// That the window speaks the person's language, and all of it.
class TestViewerTranslation : public ViewerTest
{
    Q_OBJECT

    struct Entry
    {
        QString context;
        QString source;
        QString translation;
        bool finished = true;
    };

    static QList<Entry> entriesOf(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QList<Entry> entries;
        QXmlStreamReader xml(&file);
        QString context;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == QLatin1String("name")) {
                context = xml.readElementText();
            } else if (xml.name() == QLatin1String("source")) {
                entries.append({context, xml.readElementText(), {}, true});
            } else if (xml.name() == QLatin1String("translation")) {
                entries.last().finished = !xml.attributes().hasAttribute("type");
                entries.last().translation = xml.readElementText();
            }
        }
        return entries;
    }

    static QString german()
    {
        return qEnvironmentVariable("LORIX_EXAMPLES") +
               QStringLiteral("/../apps/viewer/translations/lorix-viewer_de.ts");
    }

    static QStringList placeholders(const QString& text)
    {
        static const QRegularExpression pattern(QStringLiteral("%[0-9n]"));
        QStringList found;
        auto it = pattern.globalMatch(text);
        while (it.hasNext())
            found.append(it.next().captured());
        found.sort();
        return found;
    }

private Q_SLOTS:
    void cleanup() { m_window.reset(); }

    void everyTextIsTranslated()
    {
        const QList<Entry> entries = entriesOf(german());
        QVERIFY2(entries.size() > 250, qPrintable(german()));
        for (const Entry& entry : entries) {
            QVERIFY2(entry.finished, qPrintable(entry.source));
            QVERIFY2(!entry.translation.isEmpty(), qPrintable(entry.source));
            QCOMPARE(placeholders(entry.translation), placeholders(entry.source));
            // A menu entry has its key, and nothing else has one.
            static const QRegularExpression key(QStringLiteral("&\\w"));
            QVERIFY2(entry.translation.contains(key) == entry.source.contains(key),
                     qPrintable(entry.translation));
        }
    }

    void everyTextOfTheProgramIsThere()
    {
        const QString lupdate = QStringLiteral("/usr/lib/qt6/bin/lupdate");
        if (!QFile::exists(lupdate))
            QSKIP("lupdate is not there (Debian: qt6-l10n-tools)");
        const QString sources = qEnvironmentVariable("LORIX_EXAMPLES") + QStringLiteral("/..");
        QTemporaryDir folder;
        const QString fresh = folder.filePath("fresh.ts");
        QProcess process;
        process.setWorkingDirectory(sources);
        process.start(lupdate,
                      {"-silent", "-locations", "none", "-I", ".", "apps/viewer", "-ts", fresh});
        QVERIFY(process.waitForFinished(120000));
        const auto keys = [](const QList<Entry>& entries) {
            QStringList all;
            for (const Entry& entry : entries)
                all.append(entry.context + QStringLiteral(" | ") + entry.source);
            all.sort();
            return all;
        };
        const QStringList found = keys(entriesOf(fresh));
        QVERIFY(!found.isEmpty());
        // Otherwise: scripts/translate
        QCOMPARE(keys(entriesOf(german())), found);
    }

    void theWindowIsGerman()
    {
        if (!QFile::exists(QStringLiteral(":/translations/lorix-viewer_de.qm")))
            QSKIP("built without lrelease (Debian: qt6-l10n-tools)");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        installTranslations();
        makeWindow();
        open("bericht.pdf", samples::damagedReport());
        QVERIFY(m_window->windowTitle().endsWith(QString::fromUtf8("lorix-Betrachter")));
        QCOMPARE(m_window->menuBar()->actions().first()->text(), QString("&Datei"));
        QCOMPARE(m_window->findChild<QTabWidget*>("views")->tabText(1), QString("&Gliederung"));
        QCOMPARE(m_window->findChild<QPushButton*>("checkButton")->text(),
                 QString::fromUtf8("Prüfen"));
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
        QVERIFY2(m_window->verdict()->text().startsWith(QString::fromUtf8("Beschädigt: 2 von 28")),
                 qPrintable(m_window->verdict()->text()));
        // Also what the library says about a query.
        m_window->findPanel()->edit()->setQuery("s:nosuch == 1");
        QVERIFY2(m_window->findPanel()->message().contains("Ein Merkmal „nosuch“ gibt es nicht"),
                 qPrintable(m_window->findPanel()->message()));
        // No text of the window is left in English.
        const QList<Entry> entries = entriesOf(german());
        QSet<QString> english;
        for (const Entry& entry : entries)
            if (entry.source != entry.translation && entry.source.size() > 3)
                english.insert(entry.source);
        for (const QAction* const action : m_window->findChildren<QAction*>()) {
            QVERIFY2(!english.contains(action->text()), qPrintable(action->text()));
            QVERIFY2(!english.contains(action->toolTip()), qPrintable(action->toolTip()));
        }
        for (const QWidget* const widget : m_window->findChildren<QWidget*>()) {
            const QString text = widget->property("text").toString();
            QVERIFY2(!english.contains(text), qPrintable(text));
            QVERIFY2(!english.contains(widget->accessibleName()),
                     qPrintable(widget->accessibleName()));
        }
    }
};

QTEST_MAIN(TestViewerTranslation)
#include "tst_viewertranslation.moc"
