#pragma once

#include "Shell/ContentViewModel.h"

#include <QDir>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

namespace trellisport::tour {

/// The application's whole content in a window of a given size, to be walked through and drawn.
/// Ends the program with a sentence when something that is looked for does not come.
class Stage {
public:
    Stage(QSize size, const QDir &folder);

    /// Makes the content anew, as at a start of the application.
    void open();
    /// The visible item with this objectName, waited for.
    QQuickItem *find(const QString &objectName);
    /// Waits until the condition holds.
    void await(const char *what, const std::function<bool()> &condition);
    /// Waits until nothing is loading any longer and every animation has come to rest.
    void settle();
    /// Waits as long as the longest animation lasts.
    void rest();
    /// Shows root tab 0, 1 or 2.
    void showTab(int tab);
    /// Makes the content anew and opens the workspace of the project of this id.
    void openProject(const QString &id);
    /// Shows a tab of the open workspace, 0 the first, once the workspace is loaded.
    void showWorkspaceTab(int tab);
    void tap(const QString &objectName);
    /// Replaces the text of a field.
    void type(const QString &objectName, const QString &text);
    /// Scrolls by so many points.
    void scroll(const QString &objectName, qreal distance);
    /// Draws the window into NAME.png.
    void draw(const QString &name);
    [[nodiscard]] QQuickItem *root() const { return m_root.get(); }
    [[nodiscard]] int drawn() const { return m_drawn; }

private:
    [[nodiscard]] QQuickItem *seen(const QString &objectName) const;

    QDir m_folder;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<ContentViewModel> m_content;
    std::unique_ptr<QQuickItem> m_root;
    int m_drawn = 0;
};

} // namespace trellisport::tour
