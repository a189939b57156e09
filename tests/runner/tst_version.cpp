// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/version.h>

#include <QTest>

class TestVersion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void versionNamesLibraryNumberAndDate();
    void releaseDateStandsAlone();
    void bothSpellingsCall();
};

void TestVersion::versionNamesLibraryNumberAndDate()
{
    QCOMPARE(getVersion(), QStringLiteral("lorixlib 1.83.0.2990 of Jun 21 2013"));
}

void TestVersion::releaseDateStandsAlone()
{
    QCOMPARE(getReleaseData(), QStringLiteral("Jun 21 2013"));
}

void TestVersion::bothSpellingsCall()
{
    QCOMPARE(lorix::getVersion(), ::getVersion());
    QCOMPARE(lorix::getReleaseData(), ::getReleaseData());
}

QTEST_GUILESS_MAIN(TestVersion)
#include "tst_version.moc"
