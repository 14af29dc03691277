#include "tela/ArquivoSolto.h"

#include "controls/Clicavel.h"
#include "controls/CommonDialog.h"
#include "host/Texto.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

// A form that asks for a file.
struct Alvo {
    std::string_view Form;
    std::string_view Botao;
    std::string_view Dialogo;
    std::string_view Extensao;
    std::string_view Especie; // what has that extension
};

constexpr std::array Alvos = {Alvo{"frmEquipAfericoes", "cmdProcurar", "cdAbreArquivos", ".pdf", "um documento PDF"}};

const Alvo *AlvoDe(const IForm &form)
{
    const auto alvo = std::ranges::find(Alvos, form.NomeTipo(), &Alvo::Form);
    return alvo == Alvos.end() ? nullptr : &*alvo;
}

Ref<IControle> ControleDe(const Ref<IForm> &form, std::string_view nome)
{
    for (const Ref<IControle> &controle : form->Controles()) {
        if (controle->Nome() == nome) {
            return controle;
        }
    }
    return nullptr;
}

bool AcabaCom(const std::string &nome, std::string_view extensao)
{
    return nome.size() > extensao.size() && LCase(nome.substr(nome.size() - extensao.size())) == extensao;
}

// Takes what was brought away again when nobody asked for it.
class Trazido {
  public:
    Trazido(const Ref<IControle> &dialogo, const std::string &caminho)
        : m_Vivo(dialogo),
          m_Dialogo(*ComoTipo<CommonDialog>(dialogo))
    {
        m_Dialogo.Traz(caminho);
    }
    Trazido(const Trazido &) = delete;
    Trazido &operator=(const Trazido &) = delete;
    ~Trazido() { m_Dialogo.Traz(""); }

  private:
    Ref<IControle> m_Vivo;
    CommonDialog &m_Dialogo;
};

} // namespace

bool ArquivoSolto::Conhece(const IForm &form)
{
    return AlvoDe(form) != nullptr;
}

ArquivoSolto::ArquivoSolto(const Ref<IForm> &form) : m_Form(form) {}

bool ArquivoSolto::Recebe() const
{
    const Alvo *alvo = AlvoDe(*m_Form);
    return alvo != nullptr && ComoBase(ControleDe(m_Form, alvo->Botao))->Impedimento().empty();
}

std::string ArquivoSolto::Solta(const std::vector<ItemSolto> &itens) const
{
    if (!Recebe()) {
        return "Agora não se pode escolher um arquivo aqui.";
    }
    const Alvo &alvo = *AlvoDe(*m_Form);
    if (itens.size() != 1) {
        return "Solte um arquivo só: foram soltos " + std::to_string(itens.size()) + ".";
    }
    const ItemSolto &item = itens.front();
    if (item.Pasta) {
        return "'" + item.Nome + "' é uma pasta: solte o arquivo que está nela.";
    }
    if (!AcabaCom(item.Nome, alvo.Extensao)) {
        return "'" + item.Nome + "' não é " + std::string(alvo.Especie) + ".";
    }
    const Trazido trazido(ControleDe(m_Form, alvo.Dialogo), item.Caminho);
    const Ref<IControle> botao = ControleDe(m_Form, alvo.Botao);
    dynamic_cast<Clicavel &>(*botao).Clica();
    return {};
}
