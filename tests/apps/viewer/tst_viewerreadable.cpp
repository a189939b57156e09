// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/exampledocuments.h"
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/colours.h>
#include <apps/viewer/comparepage.h>
#include <apps/viewer/detailspanel.h>
#include <apps/viewer/extractdialog.h>
#include <apps/viewer/findpanel.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/marks.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/picturelayout.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/queryedit.h>
#include <apps/viewer/verdictbar.h>
#include <apps/viewer/welcomepage.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTextBrowser>
#include <QTreeView>
#include <QTreeWidget>
#include <QtTest>

using namespace lorix::viewer;

/// That everybody can read and reach it: contrast in light and dark palettes,
/// names for those who do not see, keys for those who have no mouse.
class TestViewerReadable : public ViewerTest
{
    Q_OBJECT

    QPalette m_light;

    static QPalette darkPalette()
    {
        // As desktops make it that say nothing of links.
        QPalette palette(QColor(0x2b, 0x2d, 0x31), QColor(0x2b, 0x2d, 0x31));
        palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
        palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2c));
        for (const QPalette::ColorRole role :
             {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
            palette.setColor(role, QColor(0xe6, 0xe6, 0xe6));
        palette.setColor(QPalette::PlaceholderText, QColor(0xa0, 0xa0, 0xa0));
        palette.setColor(QPalette::Link, QColor(0, 0, 0xff));
        palette.setColor(QPalette::Highlight, QColor(0x2a, 0x6c, 0xb8));
        palette.setColor(QPalette::HighlightedText, Qt::white);
        return palette;
    }

    void bothPalettes()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << m_light;
        QTest::newRow("dark") << darkPalette();
    }

    /// How far the pixels that stand out most do so from the ground, the colour
    /// that most pixels have.
    static double contrastIn(const QImage& image, const QRect& where)
    {
        const QRect inside = where & image.rect();
        QHash<QRgb, int> counts;
        for (int y = inside.top(); y <= inside.bottom(); ++y)
            for (int x = inside.left(); x <= inside.right(); ++x)
                ++counts[image.pixel(x, y)];
        QRgb ground = 0;
        int most = 0;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it)
            if (*it > most || (*it == most && it.key() < ground)) {
                most = *it;
                ground = it.key();
            }
        double best = 1;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it)
            best = std::max(best, contrast(QColor(it.key()), QColor(ground)));
        return best;
    }

    static double contrastOf(QWidget* widget)
    {
        const QImage image = widget->grab().toImage();
        return contrastIn(image, image.rect());
    }

    void checkDamaged()
    {
        open(examples::damaged());
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
    }

    /// The place of a part of a step's box on the grabbed picture.
    QRect inBox(int node, const QRectF& part) const
    {
        const QRect box = m_window->picture()->boxOnScreen(node);
        const double scale = m_window->picture()->transform().m11();
        return QRectF(box.x() + part.x() * scale, box.y() + part.y() * scale, part.width() * scale,
                      part.height() * scale)
            .toAlignedRect();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        m_light = QApplication::palette();
        QVERIFY(!examples::coolingFin().isEmpty());
    }
    void init() { makeWindow(); }
    void cleanup()
    {
        m_window.reset();
        QApplication::setPalette(m_light);
    }

    void labelsAndButtonsStandOut_data() { bothPalettes(); }
    void labelsAndButtonsStandOut()
    {
        QFETCH(QPalette, palette);
        QApplication::setPalette(palette);
        int looked = 0;
        const auto look = [&] {
            QTest::qWait(20);
            for (QWidget* const widget : m_window->findChildren<QWidget*>()) {
                const auto* const label = qobject_cast<QLabel*>(widget);
                const auto* const button = qobject_cast<QAbstractButton*>(widget);
                const QString text = label ? label->text() : button ? button->text() : QString();
                if (text.isEmpty() || !widget->isVisible() || !widget->isEnabled() ||
                    widget->width() < 8)
                    continue;
                ++looked;
                QVERIFY2(contrastOf(widget) >= 4.5,
                         qPrintable(QStringLiteral("%1: %2").arg(text).arg(contrastOf(widget))));
            }
        };
        open(samples::write(path("plain.pdf"), "%PDF-1.4\n"));
        look();
        checkDamaged();
        press(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        look();
        press(m_window.get(), Qt::Key_M, Qt::ControlModifier);
        press(m_window.get(), Qt::Key_3, Qt::ControlModifier);
        look();
        QVERIFY2(looked > 20, qPrintable(QString::number(looked)));
    }

    void thePictureStandsOut_data() { bothPalettes(); }
    void thePictureStandsOut()
    {
        QFETCH(QPalette, palette);
        QApplication::setPalette(palette);
        m_window->resize(1300, 900);
        checkDamaged();
        m_window->picture()->actualSize();
        const Place place = placeOf("Solve for the steady state", "result.csv");
        m_window->setCurrent(place);
        const int node = place.node;
        const auto image = [&] { return m_window->picture()->grab().toImage(); };
        const QImage shown = image();
        QVERIFY2(contrastIn(shown, inBox(node, {38, 8, 240, 24})) >= 4.5, "title");
        QVERIFY2(contrastIn(shown, inBox(node, {38, 32, 240, 18})) >= 4.5, "who and when");
        QVERIFY2(contrastIn(shown, inBox(node, {12, 11, 18, 18})) >= 3, "mark");
        for (int line = 0; line < 4; ++line) {
            const double top = 58 + 20 * line;
            QVERIFY2(contrastIn(shown, inBox(node, {66, top + 2, 200, 16})) >= 4.5, "file");
            QVERIFY2(contrastIn(shown, inBox(node, {12, top + 3, 13, 13})) >= 3, "mark of a file");
        }
        QVERIFY2(contrastIn(shown, inBox(node, {-2, 30, 6, 10})) >= 3, "frame of what is selected");
        const QRectF name(0, -PictureLayout::frameTitle - 4, 200, PictureLayout::frameTitle - 8);
        m_window->picture()->verticalScrollBar()->setValue(-1000);
        QVERIFY2(contrastIn(image(), inBox(0, name)) >= 4.5, "name of the document");
        // Not checked, and found.
        m_window->checker()->clear();
        press(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        m_window->findPanel()->edit()->setQuery("s:title %contains 'Solve'");
        press(m_window->findPanel()->edit(), Qt::Key_Return);
        QTRY_VERIFY(!m_window->findPanel()->isBusy());
        m_window->setCurrent({node, -1});
        QVERIFY2(contrastIn(image(), inBox(node, {12, 11, 18, 18})) >= 3, "mark of the unchecked");
        QVERIFY2(contrastIn(image(), inBox(node, {240, -10, 46, 12})) >= 4.5, "sign of a match");
    }

    void theOutlineAndThePagesStandOut_data() { bothPalettes(); }
    void theOutlineAndThePagesStandOut()
    {
        QFETCH(QPalette, palette);
        QApplication::setPalette(palette);
        checkDamaged();
        clickTab(1);
        QTreeView* const outline = m_window->outline();
        const QModelIndex other = outline->model()->index(0, 0);
        m_window->setCurrent(placeOf("Solve for the steady state", "result.csv"));
        const QImage shown = outline->viewport()->grab().toImage();
        for (int column = 0; column < OutlineModel::ColumnCount; ++column) {
            const QRect cell = outline->visualRect(other.siblingAtColumn(column));
            if (!other.siblingAtColumn(column).data().toString().isEmpty())
                QVERIFY2(contrastIn(shown, cell) >= 4.5, qPrintable(QString::number(column)));
        }
        QTextBrowser* const browser = m_window->details()->page();
        QVERIFY(contrastOf(browser->viewport()) >= 4.5);
        // Links have the colour that the page's style gives them.
        const QRegularExpression colour(QStringLiteral("a \\{ color: (#[0-9a-f]{6}) \\}"));
        const auto style = colour.match(browser->document()->defaultStyleSheet());
        QVERIFY(style.hasMatch());
        QVERIFY2(contrast(QColor(style.captured(1)), palette.color(QPalette::Base)) >= 4.5,
                 qPrintable(style.captured(1)));
        QVERIFY(contrast(alarmColour(palette), palette.color(QPalette::Base)) >= 4.5);
    }

    void changingThePaletteChangesTheSymbols()
    {
        open(examples::coolingFin());
        auto* const check = m_window->findChild<QAction*>("check");
        const QImage before = check->icon().pixmap(24, 24).toImage();
        QApplication::setPalette(darkPalette());
        QTRY_VERIFY(check->icon().pixmap(24, 24).toImage() != before);
    }

    void marksCanBeToldApartWithoutColours_data() { bothPalettes(); }
    void marksCanBeToldApartWithoutColours()
    {
        QFETCH(QPalette, palette);
        // As greys on the ground that they stand on.
        QList<QImage> greys;
        for (const CheckState state :
             {CheckState::NotChecked, CheckState::Valid, CheckState::Damaged}) {
            QImage image(26, 26, QImage::Format_RGB32);
            image.fill(palette.color(QPalette::Base));
            QPainter painter(&image);
            drawMark(painter, image.rect(), state, palette);
            painter.end();
            greys.append(image.convertToFormat(QImage::Format_Grayscale8));
        }
        for (const auto& [a, b] : {qMakePair(0, 1), qMakePair(1, 2), qMakePair(0, 2)}) {
            int different = 0;
            for (int y = 0; y < 26; ++y)
                for (int x = 0; x < 26; ++x)
                    different += std::abs(qGray(greys.at(a).pixel(x, y)) -
                                          qGray(greys.at(b).pixel(x, y))) > 60;
            QVERIFY2(different > 26 * 26 / 10, qPrintable(QString::number(different)));
        }
    }

    void everyControlHasAName()
    {
        open(examples::damaged());
        trigger("extractAll");
        press(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        m_window->findChild<QAction*>("showMessages")->trigger();
        m_window->setCurrent(placeOf("Solve for the steady state", "result.csv"));
        int controls = 0;
        for (QWidget* const widget : m_window->findChildren<QWidget*>()) {
            // Parts of a control speak with the name of the control.
            const bool inner = widget->objectName().startsWith("qt_") ||
                               qobject_cast<QAbstractScrollArea*>(widget->parentWidget());
            if (inner || widget->focusPolicy() == Qt::NoFocus)
                continue;
            QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
            QVERIFY(spoken);
            ++controls;
            QVERIFY2(!spoken->text(QAccessible::Name).isEmpty(),
                     qPrintable(QStringLiteral("%1 %2").arg(
                         QLatin1String(widget->metaObject()->className()), widget->objectName())));
        }
        QVERIFY2(controls > 20, qPrintable(QString::number(controls)));
        for (QAction* const action : m_window->findChildren<QAction*>())
            if (!action->isSeparator() && action->parent() == m_window.get())
                QVERIFY2(!action->text().isEmpty(), qPrintable(action->objectName()));
    }

    void shortcutsAreNoOneElses()
    {
        QHash<QString, QString> owners;
        for (const QAction* const action : m_window->findChildren<QAction*>())
            for (const QKeySequence& keys : action->shortcuts()) {
                const QString key = keys.toString();
                QVERIFY2(!owners.contains(key) || owners.value(key) == action->text(),
                         qPrintable(key + ": " + owners.value(key) + ", " + action->text()));
                owners.insert(key, action->text());
            }
        for (const char* const key : {"Ctrl+O", "Ctrl+K", "Ctrl+F", "Ctrl+E", "Ctrl+D", "Ctrl+M"})
            QVERIFY2(owners.contains(QLatin1String(key)), key);
    }

    void thePictureIsWalkedThroughByKeys()
    {
        open(examples::coolingFin());
        PictureView* const picture = m_window->picture();
        picture->setFocus();
        QSet<int> seen;
        press(picture, Qt::Key_Home);
        for (int i = 0; i < 20; ++i) {
            seen.insert(m_window->current().node);
            press(picture, Qt::Key_Right);
            seen.insert(m_window->current().node);
            press(picture, Qt::Key_Down);
            if (seen.contains(m_window->current().node))
                press(picture, Qt::Key_Left);
            if (seen.contains(m_window->current().node))
                press(picture, Qt::Key_Down);
        }
        QCOMPARE(seen.size(), m_window->history()->steps().size());
        // A step's files, one after the other, and the step again.
        press(picture, Qt::Key_Home);
        for (const char* const name : {"result.csv", "profile.svg"}) {
            press(picture, Qt::Key_Return);
            QCOMPARE(m_window->history()->fileName(m_window->current()), QString(name));
        }
        // What has been walked to is in sight at any size.
        m_window->resize(500, 400);
        for (int i = 0; i < 8; ++i)
            press(picture, Qt::Key_Plus);
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home}) {
            press(picture, key);
            QVERIFY(picture->viewport()->rect().intersects(
                picture->boxOnScreen(m_window->current().node)));
        }
    }

    void everythingFitsIntoASmallWindow()
    {
        open(examples::damaged());
        m_window->resize(480, 360);
        QTest::qWait(20);
        QVERIFY2(
            m_window->width() <= 640 && m_window->height() <= 480,
            qPrintable(QStringLiteral("%1 x %2").arg(m_window->width()).arg(m_window->height())));
        QVERIFY(m_window->picture()->isVisible());
        QVERIFY(m_window->picture()->height() > 60);
    }
};

QTEST_MAIN(TestViewerReadable)
#include "tst_viewerreadable.moc"
