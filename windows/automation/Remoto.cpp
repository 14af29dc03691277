#include "windows/automation/Remoto.h"

#include "host/Texto.h"
#include "windows/automation/Falhas.h"
#include "windows/automation/Texto16.h"

#include <ocidl.h>

#include <map>
#include <memory>

namespace nativo {
namespace {

// A foreign object of which no more is known.
class ObjetoQualquer : public Remoto<Objeto> {
  public:
    using Remoto::Remoto;
};

std::map<std::string_view, detalhe::FazRemoto> &Fabricas()
{
    static std::map<std::string_view, detalhe::FazRemoto> fabricas{
        {detalhe::NomeDoContrato<::Objeto>(),
         [](Com<IDispatch> objeto) -> Ref<::Objeto> { return Novo<ObjetoQualquer>(std::move(objeto)); }}};
    return fabricas;
}

const std::shared_ptr<detalhe::RemotosVivos> &Vivos()
{
    static const auto vivos = std::make_shared<detalhe::RemotosVivos>();
    return vivos;
}

// By which an object is the same as another one. Good as long as the object is held.
IUnknown *Identidade(const Com<IDispatch> &objeto)
{
    const Com<IUnknown> identidade = objeto.Como<IUnknown>(IID_IUnknown);
    return identidade ? identidade.Ponteiro() : objeto.Ponteiro();
}

std::string NomeNoTipo(const Com<ITypeInfo> &tipo)
{
    BSTR nome = nullptr;
    if (!tipo || FAILED(tipo->GetDocumentation(MEMBERID_NIL, &nome, nullptr, nullptr, nullptr)) || nome == nullptr) {
        return {};
    }
    std::string texto = ParaUtf8({nome, SysStringLen(nome)});
    SysFreeString(nome);
    // The default interface of a class has its name behind an underscore.
    return texto.starts_with('_') ? texto.substr(1) : texto;
}

} // namespace

ObjetoRemoto::ObjetoRemoto(Com<IDispatch> objeto)
    : m_Objeto(std::move(objeto)),
      m_Membros(std::make_shared<std::vector<std::pair<std::string, DISPID>>>()),
      m_Vivos(Vivos())
{
    if (!m_Objeto) {
        throw Falha(NumeroFalha::ObjetoNaoDefinido);
    }
    m_Identidade = Identidade(m_Objeto);
}

ObjetoRemoto::~ObjetoRemoto()
{
    const auto deste = m_Vivos->find(m_Identidade);
    if (deste != m_Vivos->end()) {
        std::erase_if(deste->second, [](const auto &par) { return par.second.expired(); });
        if (deste->second.empty()) {
            m_Vivos->erase(deste);
        }
    }
}

DISPID ObjetoRemoto::Membro(std::string_view nome) const
{
    for (const auto &[conhecido, numero] : *m_Membros) {
        if (conhecido == nome) {
            return numero;
        }
    }
    const auto membros = m_Membros;
    const Com<IDispatch> objeto = m_Objeto;
    const DISPID numero = NumeroDoMembro(objeto, nome);
    membros->emplace_back(nome, numero);
    return numero;
}

const std::string &ObjetoRemoto::Classe() const
{
    // Asked each time, as a program of the platform does: what stands behind a reference may tell another class later.
    m_Classe = ClasseDe(m_Objeto);
    if (m_Classe.empty()) {
        m_Classe = "Object";
    }
    return m_Classe;
}

DISPID NumeroDoMembro(const Com<IDispatch> &objeto, std::string_view nome)
{
    std::wstring largo = ParaUtf16(nome);
    LPOLESTR ponteiro = largo.data();
    DISPID numero = DISPID_UNKNOWN;
    Exige(objeto->GetIDsOfNames(IID_NULL, &ponteiro, 1, LOCALE_USER_DEFAULT, &numero));
    if (numero == DISPID_UNKNOWN) {
        throw Falha(NumeroFalha::MembroInexistente);
    }
    return numero;
}

std::string ClasseDe(const Com<IDispatch> &objeto)
{
    Com<ITypeInfo> tipo;
    if (const auto classe = objeto.Como<IProvideClassInfo>();
        classe && SUCCEEDED(classe->GetClassInfo(tipo.Recebe()))) {
        return NomeNoTipo(tipo);
    }
    if (SUCCEEDED(objeto->GetTypeInfo(0, LOCALE_USER_DEFAULT, tipo.Recebe()))) {
        return NomeNoTipo(tipo);
    }
    return {};
}

namespace detalhe {

void RegistraRemoto(std::string_view contrato, FazRemoto faz)
{
    Fabricas()[contrato] = std::move(faz);
}

Ref<::Objeto> RemotoDe(std::string_view contrato, const Com<IDispatch> &objeto)
{
    IUnknown *const identidade = Identidade(objeto);
    if (const auto deste = Vivos()->find(identidade); deste != Vivos()->end()) {
        const auto vivo = deste->second.find(contrato);
        // Where no class is asked for, what stands for it already will do.
        const auto algum = vivo == deste->second.end() && contrato == detalhe::NomeDoContrato<::Objeto>()
                               ? deste->second.begin()
                               : vivo;
        if (algum != deste->second.end()) {
            if (auto alvo = algum->second.lock()) {
                return Ref<::Objeto>(std::move(alvo));
            }
        }
    }
    const auto fabrica = Fabricas().find(contrato);
    if (fabrica == Fabricas().end()) {
        throw Falha(NumeroFalha::TipoIncompativel);
    }
    Ref<::Objeto> novo = fabrica->second(objeto);
    (*Vivos())[identidade][contrato] = novo->weak_from_this();
    return novo;
}

} // namespace detalhe
} // namespace nativo
