#include "Platform/Web/Fonts.h"

#include <QDir>
#include <QFontDatabase>

namespace trellisport::platform {

void loadFonts()
{
    // The toolkit's own stands in for characters that the others lack.
    for (const QString &folder : {QStringLiteral(":/console-fonts"), QStringLiteral(":/fonts")}) {
        for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files)) {
            QFontDatabase::addApplicationFont(file.filePath());
        }
    }
}

} // namespace trellisport::platform
