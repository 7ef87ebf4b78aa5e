#include "Platform/Web/PageField.h"

#include "Platform/Toolkit/TextChange.h"
#include "Platform/Web/JsText.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <emscripten/em_macros.h>

#include <algorithm>

// Script/Field.js
extern "C" void trellisport_watch_field();
extern "C" void trellisport_leave_field();
extern "C" bool trellisport_fill_field(const char *text, std::size_t size, int anchor, int cursor);
extern "C" void trellisport_place_field(double x, double y);

namespace trellisport::platform {

namespace {

PageField *current = nullptr;

/// What a text field tells of itself; an empty one where none has the focus.
struct Field {
    QObject *object = nullptr;
    QString text; ///< of the paragraph with the cursor
    /// Places in the paragraph; an anchor in another one is before or behind it.
    int anchor = 0;
    int cursor = 0;
};

Field focusedField()
{
    QObject *const object = QGuiApplication::focusObject();
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImSurroundingText | Qt::ImCursorPosition |
                                 Qt::ImAnchorPosition);
    if (!object || !QCoreApplication::sendEvent(object, &query) ||
        !query.value(Qt::ImEnabled).toBool()) {
        return {};
    }
    // The page's field drops what ends a line, and every place behind it would be another.
    return {.object = object,
            .text = query.value(Qt::ImSurroundingText)
                        .toString()
                        .replace(QLatin1Char('\r'), QLatin1Char(' '))
                        .replace(QLatin1Char('\n'), QLatin1Char(' ')),
            .anchor = query.value(Qt::ImAnchorPosition).toInt(),
            .cursor = query.value(Qt::ImCursorPosition).toInt()};
}

} // namespace

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_field_edited(int anchor, int cursor)
{
    const QString text = QString::fromStdString(takeText());
    if (current) {
        current->edited(text, anchor, cursor);
    }
}

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_field_wanted()
{
    if (current) {
        current->fill();
    }
}

PageField::PageField()
{
    current = this;
    trellisport_watch_field();
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, [this] { fill(); });
    connect(QGuiApplication::inputMethod(), &QInputMethod::cursorRectangleChanged, this, [this] {
        if (!m_isEdited) {
            fill();
        }
    });
}

PageField::~PageField()
{
    current = nullptr;
}

void PageField::edited(const QString &text, int anchor, int cursor)
{
    // A field that is just left may say its last word when another one has the focus.
    if (m_object && m_object == focusedField().object) {
        const QScopedValueRollback inEdit(m_isEdited, true);
        const bool selectedBeyond = m_selectsBeyond;
        apply(text);
        if (!selectedBeyond) {
            select(anchor, cursor);
        }
        m_anchor = anchor;
        m_cursor = cursor;
    }
    m_known = text;
    // It may not have taken all of it.
    fill();
}

void PageField::apply(const QString &text)
{
    const TextChange change = changeBetween(m_known, text);
    if (change.removed == 0 && change.inserted.isEmpty()) {
        return;
    }
    QInputMethodEvent event;
    if (!m_selectsBeyond) {
        // Nothing must be selected that would go with it.
        select(static_cast<int>(change.from), static_cast<int>(change.from));
        event.setCommitString(change.inserted, 0, static_cast<int>(change.removed));
    } else if (!change.inserted.isEmpty()) {
        event.setCommitString(change.inserted);
    } else {
        QKeyEvent deletion(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
        QCoreApplication::sendEvent(m_object, &deletion);
        return;
    }
    if (m_object) {
        QCoreApplication::sendEvent(m_object, &event);
    }
}

void PageField::select(int anchor, int cursor)
{
    if (m_object) {
        // By itself: fields do not look at it beside a text.
        QInputMethodEvent event(
            {}, {{QInputMethodEvent::Selection, anchor, cursor - anchor, QVariant()}});
        QCoreApplication::sendEvent(m_object, &event);
    }
}

void PageField::fill()
{
    const Field field = focusedField();
    const auto length = static_cast<int>(field.text.size());
    const int anchor = std::clamp(field.anchor, 0, length);
    if (field.object != m_object || field.text != m_known || anchor != m_anchor ||
        field.cursor != m_cursor) {
        // A keyboard that is composing would put its text back. Where it was for another field,
        // that one has it already.
        trellisport_leave_field();
    }
    const std::string text = field.text.toStdString();
    if (trellisport_fill_field(text.data(), text.size(), anchor, field.cursor)) {
        m_object = field.object;
        m_known = field.text;
        m_anchor = anchor;
        m_cursor = field.cursor;
        m_selectsBeyond = anchor != field.anchor;
    }
    // Where keyboards offer words beside the cursor.
    const QPointF place = QGuiApplication::inputMethod()->cursorRectangle().topLeft();
    trellisport_place_field(place.x(), place.y());
}

} // namespace trellisport::platform
