#pragma once

#include <QObject>
#include <QQuickTextDocument>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace trellisport {

/// What was typed into a text area, character for character: the area's own text property has
/// blanks for no-break spaces. Lines end in "\n".
class EditedText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    using QObject::QObject;

    [[nodiscard]] Q_INVOKABLE static QString of(QQuickTextDocument *document);
};

} // namespace trellisport
