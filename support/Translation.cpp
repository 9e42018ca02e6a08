#include "support/Translation.h"

#include <QCoreApplication>

namespace tallyvox {

QString translated(const char* context, const char16_t* text)
{
    const QString source = QString::fromUtf16(text);
    return QCoreApplication::translate(context, source.toUtf8().constData());
}

} // namespace tallyvox
