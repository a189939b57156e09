// SPDX-License-Identifier: BSD-3-Clause
// Grabs the viewer's main views into the folder given, for the documents.
#include "apps/viewer/sampledocuments.h"

#include <apps/viewer/checker.h>
#include <apps/viewer/comparepage.h>
#include <apps/viewer/detailspanel.h>
#include <apps/viewer/findpanel.h>
#include <apps/viewer/history.h>
#include <apps/viewer/mainwindow.h>
#include <apps/viewer/previewpane.h>
#include <apps/viewer/queryedit.h>

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QSettings>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

using namespace lorix::viewer;

namespace {

Place placeOf(const History& history, const QString& name)
{
    for (int node = 0; node < history.steps().size(); ++node) {
        if (history.step(node).title == name)
            return {node, -1};
        const int files = static_cast<int>(history.step(node).step.files.size());
        for (int file = 0; file < files; ++file)
            if (history.fileName({node, file}) == name)
                return {node, file};
    }
    return {};
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x2b, 0x2d, 0x31), QColor(0x2b, 0x2d, 0x31));
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2c));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, QColor(0xe6, 0xe6, 0xe6));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xc9));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7a, 0xb6, 0xff));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    return palette;
}

class Shots
{
public:
    explicit Shots(const QString& target) : m_target(target) {}

    void open(const QString& name, const QByteArray& bytes)
    {
        m_window = std::make_unique<MainWindow>();
        m_window->resize(1240, 800);
        m_window->show();
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        m_window->openDocument(samples::write(m_folder.filePath(name), bytes));
        shown.wait(60000);
        QTest::qWait(100); // the view fits what it shows once it has its size
    }
    void check()
    {
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        QMetaObject::invokeMethod(m_window->findChild<QObject*>("check"), "trigger");
        finished.wait(60000);
    }
    void select(const QString& name)
    {
        m_window->setCurrent(placeOf(*m_window->history(), name));
        QTest::qWait(200);
    }
    void trigger(const char* action)
    {
        QMetaObject::invokeMethod(m_window->findChild<QObject*>(QLatin1String(action)), "trigger");
        QTest::qWait(50);
    }
    void save(const QString& name)
    {
        QTest::qWait(150);
        m_window->grab().save(QDir(m_target).filePath(name + QStringLiteral(".png")));
    }
    MainWindow& window() { return *m_window; }
    QString write(const QString& name, const QByteArray& bytes)
    {
        return samples::write(m_folder.filePath(name), bytes);
    }

private:
    QString m_target;
    QTemporaryDir m_folder;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    QTemporaryDir settings;
    QApplication::setOrganizationName(QStringLiteral("lorix"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    QDir().mkpath(QString::fromLocal8Bit(argv[1]));

    Shots shots(QString::fromLocal8Bit(argv[1]));
    shots.open(QStringLiteral("fin-report.pdf"), samples::report());
    shots.check();
    shots.select(QStringLiteral("Compute the temperatures"));
    shots.save(QStringLiteral("viewer-picture"));
    shots.select(QStringLiteral("map.png"));
    QTest::keyClick(&shots.window(), Qt::Key_2, Qt::ControlModifier);
    shots.save(QStringLiteral("viewer-outline"));
    shots.window().compareWith(
        shots.write(QStringLiteral("fin-report-march.pdf"), samples::otherReport()));
    if (!QTest::qWaitFor([&] { return !shots.window().compare()->isBusy(); }, 60000))
        return 3;
    QTreeWidget* const steps = shots.window().compare()->steps();
    steps->setCurrentItem(steps->topLevelItem(2));
    shots.save(QStringLiteral("viewer-compare"));

    shots.open(QStringLiteral("fin-report.pdf"), samples::report());
    shots.trigger("find");
    shots.window().findPanel()->edit()->setQuery(
        QStringLiteral("s:tool == 'python' && f:isoutfile && f:parentid == s:tagid"));
    shots.window().findPanel()->find();
    if (!QTest::qWaitFor([&] { return !shots.window().findPanel()->isBusy(); }, 60000))
        return 3;
    shots.save(QStringLiteral("viewer-find"));

    QApplication::setPalette(darkPalette());
    shots.open(QStringLiteral("fin-report.pdf"), samples::damagedReport());
    shots.check();
    shots.trigger("showMessages");
    shots.select(QStringLiteral("temperatures.csv"));
    shots.save(QStringLiteral("viewer-damaged"));
    return 0;
}
