// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "dzfileformat.h"

namespace {

const DzFileFormats::Use reading = DzFileFormats::Reading;
const DzFileFormats::Use writing = DzFileFormats::Writing;

} // namespace

TEST(FileFormats, dialogsOfferEverySuffixThatIsReadOrWritten)
{
    const QString network = DzFileKind::network();
    const QString scene = DzFileKind::scene();
    EXPECT_EQ(DzFileFormats::getDialogFilter({ scene }, reading),
        QStringLiteral("Scenes (*.duf *.dsf *.obj);;All files (*)"));
    EXPECT_EQ(DzFileFormats::getDialogFilter({ scene }, writing),
        QStringLiteral("Scenes (*.duf *.dsf);;All files (*)"));
    EXPECT_EQ(DzFileFormats::getDialogFilter({ network, scene }, reading),
        QStringLiteral("Networks and scenes (*.sskn *.duf *.dsf *.obj);;All files (*)"));
    EXPECT_EQ(DzFileFormats::getDialogFilter({ network, scene, DzFileKind::script() }, reading),
        QStringLiteral("Networks, scenes and scripts (*.sskn *.duf *.dsf *.obj *.dsa);;"
                       "All files (*)"));
    EXPECT_EQ(DzFileFormats::getDialogFilter({ QStringLiteral("no such kind") }, reading),
        QStringLiteral("All files (*)"));
}

TEST(FileFormats, namesTellTheKindWhateverTheirCase)
{
    EXPECT_EQ(DzFileFormats::getKind(QStringLiteral("/a.b/c.SSKN")), DzFileKind::network());
    EXPECT_EQ(DzFileFormats::getKind(QStringLiteral("c.tar.Duf")), DzFileKind::scene());
    EXPECT_EQ(DzFileFormats::getKind(QStringLiteral("c.dsf")), DzFileKind::scene());
    EXPECT_EQ(DzFileFormats::getKind(QStringLiteral("c.duf.png")), QString());
    EXPECT_EQ(DzFileFormats::getKind(QStringLiteral("/a.duf/c")), QString());
    EXPECT_TRUE(DzFileFormats::isUsable(QStringLiteral("c.OBJ"), DzFileKind::scene(), reading));
    EXPECT_FALSE(DzFileFormats::isUsable(QStringLiteral("c.obj"), DzFileKind::scene(), writing));
    EXPECT_FALSE(DzFileFormats::isUsable(QStringLiteral("c"), DzFileKind::scene(), reading));
}

TEST(FileFormats, helpAndNewFilesAskTheSameTable)
{
    EXPECT_EQ(DzFileFormats::getSuffixText({ DzFileKind::scene() }, reading),
        QStringLiteral(".duf, .dsf, .obj"));
    EXPECT_EQ(DzFileFormats::getUsualSuffix(DzFileKind::scene()), QStringLiteral("duf"));
    EXPECT_EQ(DzFileFormats::getUsualSuffix(DzFileKind::network()), QStringLiteral("sskn"));
    EXPECT_EQ(DzFileFormats::getUsualSuffix(DzFileKind::script()), QString());
}

TEST(FileFormats, layersAboveAddTheirRowsOnce)
{
    const QString kind = QStringLiteral("picture");
    const DzFileFormat row { kind, QStringLiteral("Pictures"),
        { QStringLiteral("tif"), QStringLiteral("tiff") }, true, false };
    const int before = DzFileFormats::getAll().size();
    DzFileFormats::add(row);
    DzFileFormats::add(row);
    EXPECT_EQ(DzFileFormats::getAll().size(), before + 1);
    EXPECT_EQ(DzFileFormats::getKind(QStringLiteral("a.TIFF")), kind);
    EXPECT_EQ(DzFileFormats::getDialogFilter({ kind }, reading),
        QStringLiteral("Pictures (*.tif *.tiff);;All files (*)"));
}
