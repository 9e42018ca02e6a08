#include "shell/AccessibleComboBox.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QComboBox>

namespace tallyvox {

namespace {

class AccessibleComboBox final : public QAccessibleWidget {
public:
    explicit AccessibleComboBox(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name && !widget()->accessibleName().isEmpty()) {
            return widget()->accessibleName();
        }
        if (kind == QAccessible::Name || kind == QAccessible::Value) {
            return comboBox()->currentText();
        }
        return QAccessibleWidget::text(kind);
    }

    // The list of items, as Qt's own view of a pop-up has it.
    int childCount() const override { return comboBox()->view() != nullptr ? 1 : 0; }
    QAccessibleInterface* child(int index) const override
    {
        QAbstractItemView* view = comboBox()->view();
        return index == 0 && view != nullptr ? QAccessible::queryAccessibleInterface(view)
                                             : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* item) const override
    {
        return item != nullptr && item->object() == comboBox()->view() ? 0 : -1;
    }

    QStringList actionNames() const override
    {
        return QStringList{showMenuAction(), pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override
    {
        if (name == showMenuAction() || name == pressAction()) {
            comboBox()->showPopup();
            return;
        }
        QAccessibleWidget::doAction(name);
    }

private:
    QComboBox* comboBox() const { return static_cast<QComboBox*>(widget()); }
};

QAccessibleInterface* comboBoxFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("QComboBox") && object != nullptr && object->isWidgetType()) {
        return new AccessibleComboBox(static_cast<QComboBox*>(object));
    }
    return nullptr;
}

} // namespace

void installAccessibleComboBoxes()
{
    static const bool installed = [] {
        QAccessible::installFactory(comboBoxFactory);
        return true;
    }();
    (void)installed;
}

} // namespace tallyvox
