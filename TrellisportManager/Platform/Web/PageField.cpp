#include "Platform/Web/PageField.h"

#include "Platform/Toolkit/TextChange.h"
#include "Platform/Web/JsText.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QScopedValueRollback>

#include <emscripten/em_macros.h>

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
    return {.object = object,
            .text = query.value(Qt::ImSurroundingText).toString(),
            .anchor = query.value(Qt::ImAnchorPosition).toInt(),
            .cursor = query.value(Qt::ImCursorPosition).toInt()};
}

void moveCursor(QObject &field, qsizetype place)
{
    QInputMethodEvent event(
        {}, {{QInputMethodEvent::Selection, static_cast<int>(place), 0, QVariant()}});
    QCoreApplication::sendEvent(&field, &event);
}

} // namespace

extern "C" EMSCRIPTEN_KEEPALIVE void trellisport_field_edited(int cursor)
{
    const QString text = QString::fromStdString(takeText());
    if (current) {
        current->edited(text, cursor);
    }
}

PageField::PageField()
{
    current = this;
    trellisport_watch_field();
    connect(qGuiApp, &QGuiApplication::focusObjectChanged, this, [this] {
        // What is being composed belongs to the field before, which has it already.
        trellisport_leave_field();
        fill();
    });
    connect(QGuiApplication::inputMethod(), &QInputMethod::cursorRectangleChanged, this, [this] {
        if (!m_isEdited) {
            fill();
        }
    });
}

void PageField::edited(const QString &text, int cursor)
{
    const TextChange change = changeBetween(m_known, text);
    m_known = text;
    m_knownCursor = cursor;
    const Field field = focusedField();
    if (!field.object) {
        return;
    }
    const QScopedValueRollback inEdit(m_isEdited, true);
    // Nothing must be selected that would go with it. And fields look at a place only by itself.
    moveCursor(*field.object, change.from);
    QInputMethodEvent event;
    event.setCommitString(change.inserted, 0, static_cast<int>(change.removed));
    QCoreApplication::sendEvent(field.object, &event);
    moveCursor(*field.object, cursor);
    // It may not have taken all of it.
    fill();
}

void PageField::fill()
{
    const Field field = focusedField();
    if (field.text != m_known || field.cursor != m_knownCursor) {
        // A keyboard that is composing would put its text back.
        trellisport_leave_field();
    }
    const std::string text = field.text.toStdString();
    if (trellisport_fill_field(text.data(), text.size(), field.anchor, field.cursor)) {
        m_known = field.text;
        m_knownCursor = field.cursor;
    }
    // Where keyboards offer words beside the cursor.
    const QPointF place = QGuiApplication::inputMethod()->cursorRectangle().topLeft();
    trellisport_place_field(place.x(), place.y());
}

} // namespace trellisport::platform
