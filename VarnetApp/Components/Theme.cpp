#include "VarnetApp/Components/Theme.h"

namespace varnet {

Theme::Theme(QObject* parent) : QObject(parent) {}

} // namespace varnet
