// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfilename.h"
#include "dzfilewriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <gtest/gtest.h>

namespace {

/// File names are bytes while it lives.
class ByteNames
{
public:
    ByteNames() { dzUseByteFileNames(); }
    ~ByteNames() { QTextCodec::setCodecForLocale(m_before); }

private:
    QTextCodec* m_before = QTextCodec::codecForLocale();
};

std::string shown(const char* text)
{
    return dzShownText(QString::fromUtf8(text)).toStdString();
}

} // namespace

TEST(FileNames, anyBytesBecomeATextAndTheSameBytesAgain)
{
    const ByteNames names;
    for (const QByteArray& bytes : { QByteArray("plain.txt"), QByteArray("gr\xc3\xbc\xc3\x9f.txt"),
             QByteArray("caf\xe9.txt"), QByteArray("\xff\xfe"), QByteArray("\xc0\x80\xed\xa0\x80"),
             QByteArray("\xf0\x9f\x98\x80 \xf0\x9f\x98"), QByteArray("\xf5\x80\x80\x80"),
             QByteArray("\xe2\x82"), QByteArray() })
        EXPECT_EQ(QFile::encodeName(QFile::decodeName(bytes)), bytes) << bytes.toHex().constData();
    EXPECT_EQ(QFile::decodeName("gr\xc3\xbc n"), QString::fromUtf8("gr\xc3\xbc n"));
    EXPECT_EQ(QFile::encodeName(QString::fromUtf8("\xf0\x9f\x98\x80")), "\xf0\x9f\x98\x80");
    // Names that differ stay different.
    EXPECT_NE(QFile::decodeName("caf\xe9"), QFile::decodeName("caf\xea"));
    EXPECT_NE(QFile::decodeName("caf\xe9"), QFile::decodeName("caf?"));
}

TEST(FileNames, aFileOfSuchANameIsWrittenReadAndListed)
{
    const ByteNames names;
    const QTemporaryDir folder;
    const QString path = folder.path() + QLatin1Char('/') + QFile::decodeName("caf\xe9.txt");
    QString error;
    ASSERT_TRUE(dzWriteFile(path, "content", &error)) << error.toStdString();
    const QStringList listed = QDir(folder.path()).entryList(QDir::Files);
    ASSERT_EQ(listed.size(), 1);
    EXPECT_EQ(QFile::encodeName(listed.first()), "caf\xe9.txt");
    QByteArray data;
    EXPECT_TRUE(dzReadFile(folder.filePath(listed.first()), 100, &data, &error));
    EXPECT_EQ(data, "content");
}

TEST(FileNames, whatATerminalWouldObeyIsShownEscaped)
{
    EXPECT_EQ(shown("gr\xc3\xbc\xc3\x9f \\ \"x\" \xf0\x9f\x98\x80"),
        "gr\xc3\xbc\xc3\x9f \\ \"x\" \xf0\x9f\x98\x80");
    EXPECT_EQ(shown("a\x1b[31mb\x07\x7f"), "a\\x1b[31mb\\x07\\x7f");
    EXPECT_EQ(shown("a\nb\tc\rd"), "a\\nb\\tc\\rd");
    EXPECT_EQ(shown("\xc2\x9b"), "\\x9b");
    EXPECT_EQ(shown("\xe2\x80\xaegnp.exe\xe2\x80\xa8"), "\\u202egnp.exe\\u2028");
    const ByteNames names;
    EXPECT_EQ(dzShownText(QFile::decodeName("caf\xe9")).toStdString(), "caf\\xe9");
}

TEST(FileNames, longNamesAreCut)
{
    const QString name(1000, QLatin1Char('n'));
    EXPECT_EQ(dzShownName(name).size(), 120);
    EXPECT_TRUE(dzShownName(name).endsWith(QLatin1String("n...")));
    EXPECT_EQ(dzShownName(name.left(120)), name.left(120));
    EXPECT_EQ(dzShownName(QStringLiteral("a\nb")), QStringLiteral("a\\nb"));
}
