#include "UnitItemUnitDelegateImpl.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace rkBase {

UnitItemUnitDelegateImpl::UnitItemUnitDelegateImpl(const QString& unitTag, QWidget* parent)
    : QWidget(parent), m_edit(new QLineEdit(this)), m_tag(new QLabel(unitTag, this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 2, 0);
    layout->setSpacing(2);
    m_edit->setFrame(false);
    m_edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_tag);
    m_tag->setVisible(!unitTag.isEmpty());
    setAutoFillBackground(true);
    setFocusProxy(m_edit);
    connect(m_edit, SIGNAL(returnPressed()), this, SIGNAL(returnPressed()));
}

QString UnitItemUnitDelegateImpl::text() const
{
    return m_edit->text();
}

void UnitItemUnitDelegateImpl::setText(const QString& text)
{
    m_edit->setText(text);
    m_edit->selectAll();
}

QString UnitItemUnitDelegateImpl::unitTag() const
{
    return m_tag->text();
}

} // namespace rkBase
