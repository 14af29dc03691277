#include "desk/windows/Acessibilidade.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeySequence>
#include <QRadioButton>

namespace mesa {

namespace {

QString SemLetra(const QString &texto)
{
    QString limpo;
    for (qsizetype n = 0; n < texto.size(); ++n) {
        if (texto[n] == '&' && n + 1 < texto.size()) {
            ++n;
        }
        limpo += texto[n];
    }
    return limpo;
}

// The toolkit takes an option that does not exclude others by itself for a check box.
class OpcaoAcessivel : public QAccessibleWidget {
  public:
    explicit OpcaoAcessivel(QRadioButton *opcao) : QAccessibleWidget(opcao, QAccessible::RadioButton), m_Opcao(opcao) {}

    QString text(QAccessible::Text qual) const override
    {
        if (qual == QAccessible::Name && m_Opcao->accessibleName().isEmpty()) {
            return SemLetra(m_Opcao->text());
        }
        if (qual == QAccessible::Accelerator) {
            return QKeySequence::mnemonic(m_Opcao->text()).toString(QKeySequence::NativeText);
        }
        return QAccessibleWidget::text(qual);
    }
    QAccessible::State state() const override
    {
        QAccessible::State estado = QAccessibleWidget::state();
        estado.checkable = true;
        estado.checked = m_Opcao->isChecked();
        return estado;
    }
    QStringList actionNames() const override
    {
        QStringList nomes = QAccessibleWidget::actionNames();
        if (m_Opcao->isEnabled()) {
            nomes.prepend(pressAction());
        }
        return nomes;
    }
    void doAction(const QString &nome) override
    {
        if (nome == pressAction()) {
            m_Opcao->click();
        } else {
            QAccessibleWidget::doAction(nome);
        }
    }

  private:
    QRadioButton *m_Opcao;
};

QAccessibleInterface *FazAcessivel(const QString &classe, QObject *objeto)
{
    if (classe == "QRadioButton") {
        return new OpcaoAcessivel(static_cast<QRadioButton *>(objeto));
    }
    if (classe == "QPdfView") {
        return new QAccessibleWidget(static_cast<QWidget *>(objeto), QAccessible::Document);
    }
    return nullptr;
}

} // namespace

void PreparaAcessibilidade()
{
    QAccessible::installFactory(FazAcessivel);
}

void Anuncia(QWidget &texto)
{
    QAccessibleEvent evento(&texto, QAccessible::Alert);
    QAccessible::updateAccessibility(&evento);
}

} // namespace mesa
