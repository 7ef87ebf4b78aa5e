#include "EmptySpecimens.h"
#include "QmlSupport/QmlScene.h"

#include <QtQml/qqmlextensionplugin.h>

#include <gmock/gmock.h>

Q_IMPORT_QML_PLUGIN(TrellisportGalleryPlugin)

namespace trellisport::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What is said of a page with these specimens.
QStringList saidOf(const QByteArray &specimens)
{
    QmlScene scene(
        "import QtQuick\nimport TrellisportGallery\nimport TrellisportManager.Presentation\n"
        "GalleryPage { title: \"Page\"\n" +
        specimens + "}");
    (void)scene.picture();
    return gallery::emptySpecimens(*scene.root(), scene.picture());
}

TEST(EmptySpecimens, WhatIsSeenIsNotTold)
{
    EXPECT_THAT(saidOf(R"(Specimen { caption: "Two"
        Surface { width: 40; height: 20 }
        Row { StyledText { text: "seen" } Surface { width: 40; height: 20 } } })"),
                IsEmpty());
}

TEST(EmptySpecimens, APieceThatDrawsNothingIsTold)
{
    EXPECT_THAT(saidOf(R"(Specimen { caption: "Two"
        Surface { width: 40; height: 20 }
        Row { Surface { width: 40; height: 20 } Surface { width: 0; height: 20 } } })"),
                ElementsAre(u"piece 2 of \"Two\" is not seen"));
}

TEST(EmptySpecimens, ATextThatIsNotSeenInItsPieceIsTold)
{
    EXPECT_THAT(saidOf(R"(Specimen { caption: "One"
        Surface { width: 40; height: 20; clip: true; StyledText { y: 30; text: "below" } } })"),
                ElementsAre(u"the text \"below\" of \"One\" is not seen"));
}

TEST(EmptySpecimens, ASpecimenWithoutPiecesIsTold)
{
    EXPECT_THAT(saidOf(R"(Specimen { caption: "None" })"), ElementsAre(u"\"None\" has no piece"));
}

} // namespace
} // namespace trellisport::test
