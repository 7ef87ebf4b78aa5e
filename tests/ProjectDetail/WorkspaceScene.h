#pragma once

#include "Presentation/Colors.h"
#include "Presentation/LinkController.h"
#include "ProjectDetail/ProjectDetailViewModel.h"
#include "QmlSupport/QmlScene.h"
#include "ServiceFixture.h"
#include "Support/FakeLinkOpener.h"

#include <QFont>

#include <gmock/gmock.h>

#include <memory>
#include <ostream>
#include <string>

namespace trellisport::test {

/// How a text is drawn.
struct Look {
    int size;
    QFont::Weight weight;
    QColor color;
    double lineHeight;
    bool monospaced = false;

    friend bool operator==(const Look &, const Look &) = default;
    friend void PrintTo(const Look &look, std::ostream *stream)
    {
        *stream << look.size << " weight " << look.weight << ' '
                << look.color.name(QColor::HexArgb).toStdString() << " line " << look.lineHeight
                << (look.monospaced ? " monospaced" : "");
    }
};

[[nodiscard]] inline Look lookOf(const QQuickItem *text)
{
    const QFont font = fontOf(text);
    return {font.pixelSize(), font.weight(), colorOf(text), text->property("lineHeight").toDouble(),
            font.families().value(0) == QLatin1String("JetBrains Mono")};
}

/// The text styles of a workspace.
[[nodiscard]] inline Look caption(const QColor &color, QFont::Weight weight = QFont::Normal)
{
    return {12, weight, color, 16};
}
[[nodiscard]] inline Look caption2(const QColor &color, QFont::Weight weight = QFont::Normal)
{
    return {11, weight, color, 13};
}
[[nodiscard]] inline Look subheadline(const QColor &color, QFont::Weight weight = QFont::Normal)
{
    return {15, weight, color, 20};
}
[[nodiscard]] inline Look systemText(int size, const QColor &color,
                                     QFont::Weight weight = QFont::Normal)
{
    return {size, weight, color, size * 1.2};
}

inline const char *const bareProject = R"({"id":"p1","title":"Bare"})";

/// A workspace's screen over a service that answers as the test says.
class WorkspaceScene : public ServiceFixture {
protected:
    using Tab = ProjectDetailViewModel::Tab;

    void show(QSize size = {390, 844})
    {
        scene = std::make_unique<QmlScene>(
            QStringLiteral("ProjectDetail"), QStringLiteral("ProjectDetailView"),
            QVariantMap{{QStringLiteral("projectId"), QStringLiteral("p1")},
                        {QStringLiteral("backTitle"), QStringLiteral("Projects")},
                        {QStringLiteral("viewModel"), QVariant::fromValue(&model)},
                        {QStringLiteral("links"), QVariant::fromValue(&links)}},
            size);
    }
    /// Shows the workspace of the record, which is loaded.
    void showLoaded(const std::string &record = bareProject, QSize size = {390, 844})
    {
        session->alwaysReply("/projects/p1", 200, record);
        show(size);
        ASSERT_TRUE(eventually([&] { return has("header"); }));
        settle();
    }
    /// Shows a tab for which the service has the given list.
    void showTab(Tab tab, const char *urlEnd, const std::string &list,
                 const std::string &record = bareProject, QSize size = {390, 844})
    {
        session->alwaysReply(urlEnd, 200, list);
        model.setSelectedTab(tab);
        showLoaded(record, size);
        ASSERT_TRUE(eventually([&] { return !has("spinner"); }));
        settle();
    }
    /// Things find their places with the next picture.
    void settle() { (void)scene->picture(); }

    QQuickItem *item(const char *name, QQuickItem *below = nullptr) const
    {
        return scene->item(QString::fromLatin1(name), below);
    }
    /// All items of the name that are seen.
    QList<QQuickItem *> items(const char *name) const
    {
        QList<QQuickItem *> found;
        for (QQuickItem *candidate : scene->items(QString::fromLatin1(name))) {
            if (candidate->isVisible()) {
                found << candidate;
            }
        }
        return found;
    }
    bool has(const char *name) const { return scene->has(QString::fromLatin1(name)); }
    QQuickItem *text(const char *text) const { return scene->text(QString::fromUtf8(text)); }
    QRectF place(const char *name) const { return sceneRect(item(name)); }
    /// What the tab shows, from top to bottom.
    QStringList tabTexts() const { return scene->texts(item("tab")); }
    double tabTop() const { return sceneRect(item("tab")).top(); }
    /// What the items of the name read, one below the other.
    QString joined(const char *name) const
    {
        QStringList texts;
        for (const QQuickItem *piece : items(name)) {
            texts << textOf(piece);
        }
        return texts.join(QLatin1Char('\n'));
    }

    NotificationManager notifications;
    FakeLinkOpener opener;
    LinkController links{opener};
    ProjectDetailViewModel model{api, rules(), notifications, "p1"};
    std::unique_ptr<QmlScene> scene;
};

/// Checks a card's or box's ground.
inline void expectGround(const QQuickItem *ground, double radius, const QColor &color,
                         double outlineWidth, const QColor &outline = {})
{
    EXPECT_EQ(ground->property("radius").toDouble(), radius);
    EXPECT_EQ(colorOf(ground), color);
    EXPECT_EQ(ground->property("outlineWidth").toDouble(), outlineWidth);
    if (outlineWidth > 0) {
        EXPECT_EQ(ground->property("outlineColor").value<QColor>(), outline);
    }
}

/// A text of that many lines.
[[nodiscard]] inline std::string numberedLines(int count)
{
    std::string text = "line 0";
    for (int i = 1; i < count; ++i) {
        text += "\nline " + std::to_string(i);
    }
    return text;
}

/// The text between quotes, as JSON has it.
[[nodiscard]] std::string quoted(const std::string &text);

} // namespace trellisport::test
