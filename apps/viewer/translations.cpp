// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/translations.h>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace lorix::viewer {

namespace {

void install(const QString& name, const QString& folder)
{
    auto* const translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(), name, QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

} // namespace

// Translations that are not built in may lie beside the program.
void installTranslations()
{
    // The texts in the sources are English.
    if (QLocale().uiLanguages().value(0).startsWith(QLatin1String("en")))
        return;
    install(QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    install(QStringLiteral("lorix-viewer"), QCoreApplication::applicationDirPath() +
                                                QStringLiteral("/../share/lorix/translations"));
    install(QStringLiteral("lorix-viewer"), QStringLiteral(":/translations"));
}

} // namespace lorix::viewer
