// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/mainwindow.h>
#include <apps/viewer/translations.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QLoggingCategory>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("lorix"));
    QApplication::setApplicationName(QStringLiteral("lorix-viewer"));
    QApplication::setApplicationDisplayName(QStringLiteral("lorix viewer"));
    QApplication::setApplicationVersion(QStringLiteral(LORIX_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("lorix-viewer"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("lorix-viewer"),
                                                 QIcon(QStringLiteral(":/lorix-viewer.svg"))));

    // What the library notes for its developers is not for people.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    lorix::viewer::installTranslations();

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QApplication::translate("main", "Shows the history that a document carries."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QApplication::translate("main", "The document to open."),
                                 QStringLiteral("[FILE]"));
    parser.process(application);

    lorix::viewer::MainWindow window;
    window.show();
    if (!parser.positionalArguments().isEmpty())
        window.openDocument(parser.positionalArguments().first());
    return QApplication::exec();
}
