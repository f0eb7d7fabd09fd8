// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/ApplicationInstance.h"

#include <gtest/gtest.h>

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
const QString manual = build + QStringLiteral("/data/burnwick.1");
const QString reportManual = build + QStringLiteral("/data/burnwick-report.1");

QString textOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The command's standard output and standard error; a failure of the command fails the test.
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

QString captured(const QString &text, const char *pattern) {
    return QRegularExpression(QString::fromUtf8(pattern), QRegularExpression::MultilineOption)
        .match(text)
        .captured(1);
}

TEST(PackagingTest, TheVersionIsTheSameEverywhere) {
    const QStringList versionOption{QStringLiteral("--version")};
    const struct {
        const char *where;
        QString text;
        const char *pattern;
    } rows[] = {
        {"program", outputOf(program, versionOption), "^burnwick (.*)$"},
        {"report", outputOf(reportProgram, versionOption), "^burnwick-report (.*)$"},
        {"metainfo", textOf(metainfo), "<releases>\\s*<release version=\"([^\"]*)\""},
        {"changelog", textOf(sources + QStringLiteral("/packaging/changelog")), "\\Aburnwick \\(([^)]*)\\)"},
        {"manual", textOf(manual), "^\\.TH .*\"Burnwick (\\S+)\""},
        {"report's manual", textOf(reportManual), "^\\.TH .*\"Burnwick (\\S+)\""},
        {"package", textOf(build + QStringLiteral("/CPackConfig.cmake")),
         "^set\\(CPACK_PACKAGE_VERSION \"([^\"]*)\""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(captured(row.text, row.pattern).toStdString(), BURNWICK_PROJECT_VERSION) << row.where;
}

TEST(PackagingTest, TheDesktopEntryIsValidAndItsActionsExist) {
    const QString entry = sources + QStringLiteral("/data/burnwick.desktop");
    EXPECT_EQ(outputOf(QStringLiteral("desktop-file-validate"), {entry}).toStdString(), "");
    const QString text = textOf(entry);
    EXPECT_EQ(captured(text, "^Exec=(.*)$"), QFileInfo(program).fileName());
    EXPECT_TRUE(QFileInfo::exists(sources + QStringLiteral("/data/icons/") + captured(text, "^Icon=(.*)$") +
                                  QStringLiteral(".svg")));
    const QString actions = captured(text, "^Actions=(.*);$");
    ASSERT_FALSE(actions.isEmpty());
    for (const QString &action : actions.split(u';')) {
        EXPECT_TRUE(applicationActionNamed(action.toStdString())) << action.toStdString();
        EXPECT_TRUE(text.contains(QStringLiteral("[Desktop Action %1]\n").arg(action)));
        EXPECT_TRUE(text.contains(QStringLiteral("\nExec=burnwick --action %1\n").arg(action)));
    }
}

TEST(PackagingTest, TheMetainfoIsValidAndNamesTheDesktopEntry) {
    const QString output =
        outputOf(QStringLiteral("appstreamcli"), {QStringLiteral("validate"), QStringLiteral("--no-net"),
                                                  QStringLiteral("--no-color"), metainfo});
    const QStringList remarks = output.split(u'\n').filter(QRegularExpression(QStringLiteral("^[EWI]:")));
    // The developer's name has two forms. AppStream 0.16 remarks on the new one, 1.0 on the old one.
    static const QRegularExpression otherForm(
        QStringLiteral(" (unknown-tag developer|developer-name-tag-deprecated)$"));
    ASSERT_EQ(remarks.size(), 1) << output.toStdString();
    EXPECT_TRUE(remarks.first().contains(otherForm)) << output.toStdString();
    const QString launched = captured(textOf(metainfo), "<launchable [^>]*>([^<]*)<");
    EXPECT_TRUE(QFileInfo::exists(sources + QStringLiteral("/data/") + launched)) << launched.toStdString();
}

TEST(PackagingTest, TheManualsAreValidAndDocumentEachOption) {
    for (const auto &[documented, page] : {std::pair(program, manual), {reportProgram, reportManual}}) {
        const QString warnings =
            outputOf(QStringLiteral("sh"),
                     {QStringLiteral("-c"),
                      QStringLiteral("LC_ALL=C.UTF-8 MANWIDTH=80 exec man --warnings "
                                     "--encoding=UTF-8 --local-file -Tutf8 -Z \"$1\" >/dev/null"),
                      QStringLiteral("sh"), page});
        EXPECT_EQ(warnings.toStdString(), "") << page.toStdString();

        const QString text = textOf(page).remove(u'\\');
        const QString help = outputOf(documented, {QStringLiteral("--help")});
        auto option = QRegularExpression(QStringLiteral("(?<=[ ,])--?[a-z][a-z-]*")).globalMatch(help);
        EXPECT_TRUE(option.hasNext()) << help.toStdString();
        while (option.hasNext()) {
            const QString name = option.next().captured();
            EXPECT_TRUE(text.contains(QRegularExpression(
                QStringLiteral("^\\.TP\n\\.B[IR]? .*%1\\b").arg(name), QRegularExpression::MultilineOption)))
                << name.toStdString() << " in " << page.toStdString();
        }
    }
}

} // namespace
} // namespace burnwick
