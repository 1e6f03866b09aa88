#include "VarnetApp/Components/Typeface.h"

#include <QFontDatabase>

namespace varnet {

namespace {

QString sansFamily() {
    const QString inter = QStringLiteral("Inter");
    if (QFontDatabase::hasFamily(inter)) return inter;
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

} // namespace

QFont typeface(int pixels, QFont::Weight weight, double spacing) {
    QFont font(sansFamily());
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (spacing != 0) font.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    return font;
}

} // namespace varnet
