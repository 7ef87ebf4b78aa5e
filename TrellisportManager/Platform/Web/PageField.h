#pragma once

#include <QObject>
#include <QString>

namespace trellisport::platform {

/// Keeps the page's field, through which the browser's keyboards type, the same as the console's
/// field that has the focus: keyboards look at what stands around the cursor, take words of it back
/// and put others there. The toolkit's own way only adds what comes, so that a corrected word stood
/// there twice. Main thread; made once, when the toolkit's application is there, and kept.
class PageField : public QObject {
public:
    PageField();

    /// The page's field has become this, with the cursor at this place.
    void edited(const QString &text, int cursor);

private:
    void fill();

    /// What the page's field was last known to hold, and where its cursor was.
    QString m_known;
    int m_knownCursor = 0;
    bool m_isEdited = false;
};

} // namespace trellisport::platform
