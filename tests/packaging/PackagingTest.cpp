// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/ApplicationInstance.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

namespace burnwick {
namespace {

const QString sources = QStringLiteral(BURNWICK_SOURCE_DIRECTORY);
const QString build = QStringLiteral(BURNWICK_BUILD_DIRECTORY);
const QString program = QStringLiteral(BURNWICK_PROGRAM);
const QString reportProgram = QStringLiteral(BURNWICK_REPORT_PROGRAM);
const QString metainfo = build + QStringLiteral("/data/com.burnwick.Burnwick.metainfo.xml");

QString textOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// What the command wrote to both outputs; its failure fails the test.
QString outputOf(const QString &command, const QStringList &arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(command, arguments);
    EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
    const QString output = QString::fromUtf8(process.readAll());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0) << output.toStdString();
    return output;
}

QString captured(const QString &text, const QString &pattern) {
    return QRegularExpression(pattern, QRegularExpression::MultilineOption).match(text).captured(1);
}

TEST(PackagingTest, TheVersionIsTheSameEverywhere) {
    const QStringList versionOption{QStringLiteral("--version")};
    const struct {
        const char *where;
        QString text;
        QString pattern;
    } rows[] = {
        {"the program", outputOf(program, versionOption), QStringLiteral("^burnwick (.*)$")},
        {"the report", outputOf(reportProgram, versionOption), QStringLiteral("^burnwick-report (.*)$")},
        {"the newest release in the metainfo", textOf(metainfo),
         QStringLiteral("<releases>\\s*<release version=\"([^\"]*)\"")},
        {"the newest entry of the changelog", textOf(sources + QStringLiteral("/packaging/changelog")),
         QStringLiteral("\\Aburnwick \\(([^)]*)\\)")},
        {"the program's manual", textOf(build + QStringLiteral("/data/burnwick.1")),
         QStringLiteral("^\\.TH .*\"Burnwick (\\S+)\"")},
        {"the report's manual", textOf(build + QStringLiteral("/data/burnwick-report.1")),
         QStringLiteral("^\\.TH .*\"Burnwick (\\S+)\"")},
        {"the package", textOf(build + QStringLiteral("/CPackConfig.cmake")),
         QStringLiteral("^set\\(CPACK_PACKAGE_VERSION \"([^\"]*)\"")},
    };
    for (const auto &row : rows)
        EXPECT_EQ(captured(row.text, row.pattern).toStdString(), BURNWICK_PROJECT_VERSION) << row.where;
}

TEST(PackagingTest, TheTestsNamedInTheDocumentsExist) {
    QString tests;
    for (QDirIterator files(sources + QStringLiteral("/tests"), {QStringLiteral("*.cpp")}, QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext();)
        tests += textOf(files.next()).simplified();
    static const QRegularExpression name(QStringLiteral("`([A-Z]\\w+)\\.([A-Z]\\w+)`"));
    int named = 0;
    for (auto found = name.globalMatch(textOf(sources + QStringLiteral("/docs/security.md")));
         found.hasNext(); ++named) {
        const auto match = found.next();
        EXPECT_TRUE(
            tests.contains(u'(' + match.captured(1) + QStringLiteral(", ") + match.captured(2) + u')'))
            << match.captured().toStdString();
    }
    EXPECT_GT(named, 20);
}

TEST(PackagingTest, TheDesktopEntryIsValidAndItsActionsAreTheProgram) {
    const QString entry = sources + QStringLiteral("/data/burnwick.desktop");
    EXPECT_EQ(outputOf(QStringLiteral("desktop-file-validate"), {entry}).toStdString(), "");
    const QString text = textOf(entry);
    EXPECT_EQ(captured(text, QStringLiteral("^Exec=(.*)$")), QFileInfo(program).fileName());
    EXPECT_TRUE(QFileInfo::exists(sources + QStringLiteral("/data/icons/") +
                                  captured(text, QStringLiteral("^Icon=(.*)$")) + QStringLiteral(".svg")));
    const QString actions = captured(text, QStringLiteral("^Actions=(.*);$"));
    ASSERT_FALSE(actions.isEmpty());
    for (const QString &action : actions.split(u';')) {
        EXPECT_TRUE(applicationActionNamed(action.toStdString())) << action.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("[Desktop Action %1]\n").arg(action)));
        EXPECT_TRUE(text.contains(QStringLiteral("\nExec=burnwick --action %1\n").arg(action)));
    }
}

TEST(PackagingTest, TheMetainfoIsValidAndLaunchesTheDesktopEntry) {
    const QString said =
        outputOf(QStringLiteral("appstreamcli"), {QStringLiteral("validate"), QStringLiteral("--no-net"),
                                                  QStringLiteral("--no-color"), metainfo});
    const QStringList remarks = said.split(u'\n').filter(QRegularExpression(QStringLiteral("^[EWI]:")));
    // The developer's name is there in two forms. AppStream 0.16 remarks on the new one, 1.0 on the old one.
    static const QRegularExpression otherForm(
        QStringLiteral(" (unknown-tag developer|developer-name-tag-deprecated)$"));
    ASSERT_EQ(remarks.size(), 1) << said.toStdString();
    EXPECT_TRUE(remarks.first().contains(otherForm)) << said.toStdString();
    const QString launched = captured(textOf(metainfo), QStringLiteral("<launchable [^>]*>([^<]*)<"));
    EXPECT_TRUE(QFileInfo::exists(sources + QStringLiteral("/data/") + launched)) << launched.toStdString();
}

TEST(PackagingTest, TheManualsHaveNoFaultsAndTellOfEveryOption) {
    const struct {
        QString documented;
        QString path;
        int count; // of options' names, long and short
    } rows[] = {{program, QStringLiteral("/data/burnwick.1"), 6},
                {reportProgram, QStringLiteral("/data/burnwick-report.1"), 10}};
    for (const auto &[documented, path, count] : rows) {
        const QString page = build + path;
        const QString shown =
            outputOf(QStringLiteral("sh"),
                     {QStringLiteral("-c"),
                      QStringLiteral("LC_ALL=C.UTF-8 MANWIDTH=80 exec man --warnings "
                                     "--encoding=UTF-8 --local-file -Tutf8 -Z \"$1\" >/dev/null"),
                      QStringLiteral("sh"), page});
        EXPECT_EQ(shown.toStdString(), "") << path.toStdString();

        const QString text = textOf(page).remove(u'\\');
        const QString help = outputOf(documented, {QStringLiteral("--help")});
        auto option = QRegularExpression(QStringLiteral("(?<=[ ,])--?[a-z][a-z-]*")).globalMatch(help);
        int found = 0;
        for (; option.hasNext(); ++found) {
            const QString name = option.next().captured();
            EXPECT_TRUE(text.contains(QRegularExpression(
                QStringLiteral("^\\.TP\n\\.B[IR]? .*%1\\b").arg(name), QRegularExpression::MultilineOption)))
                << name.toStdString() << " in " << path.toStdString();
        }
        EXPECT_EQ(found, count) << help.toStdString();
    }
}

} // namespace
} // namespace burnwick
