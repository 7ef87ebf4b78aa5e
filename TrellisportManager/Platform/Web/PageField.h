#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

namespace trellisport::platform {

/// Keeps the page's field, through which the browser's keyboards type, the same as the console's
/// field that has the focus, or as the paragraph of it with the cursor: keyboards look at what
/// stands around the cursor, take words of it back and put others there. The toolkit's own way only
/// adds what comes, so that a corrected word stood there twice. Main thread; made once, when the
/// toolkit's application is there, and kept as long.
class PageField : public QObject {
public:
    PageField();
    ~PageField() override;
    PageField(const PageField &) = delete;
    PageField &operator=(const PageField &) = delete;

    /// The page's field has become this, with what is selected between these places.
    void edited(const QString &text, int anchor, int cursor);
    /// Makes the page's field what the console's is.
    void fill();

private:
    void apply(const QString &text);
    void select(int anchor, int cursor);

    QPointer<QObject> m_object; ///< the console's field that the page's was last filled from
    QString m_known;            ///< what the page's field was last known to hold
    int m_anchor = 0;
    int m_cursor = 0;
    bool m_selectsBeyond = false; ///< more than m_known is selected in the console
    bool m_isEdited = false;
};

} // namespace trellisport::platform
