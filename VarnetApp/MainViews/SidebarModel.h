#pragma once

#include "VarnetApp/AppStore/Page.h"
#include "VarnetApp/Components/KeyedListModel.h"
#include "VarnetApp/Components/ViewContext.h"

#include <QLocale>
#include <QtQml/qqmlregistration.h>

#include <cstddef>
#include <optional>
#include <string>

namespace varnet {

/// A page as the sidebar names it.
struct SidebarEntry {
    std::string key; ///< the page's own name
    Page page = Page::overview;
    std::optional<std::size_t> count;
    bool selected = false;
    QLocale locale;

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const SidebarEntry&, const SidebarEntry&) = default;
};

/// The pages in the order of their digits, with what each holds.
class SidebarModel : public ViewModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QAbstractItemModel* pages READ pages CONSTANT)

public:
    using ViewModel::ViewModel;

    QAbstractItemModel* pages() { return &pages_; }

protected:
    void begin() override;

private:
    void refresh();

    KeyedListModel<SidebarEntry> pages_;
};

} // namespace varnet
