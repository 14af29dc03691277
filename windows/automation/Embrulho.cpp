#include "windows/automation/Embrulho.h"

#include "windows/automation/Registros.h"
#include "windows/automation/Texto16.h"

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <map>
#include <memory>

namespace nativo {
namespace {

std::atomic<long> Contagem{0};

// Where the numbers of the members begin that an object has of its own.
constexpr DISPID PrimeiroProprio = 0x10000;

// What every object of this file is made of: counted, and alive as long as the component is needed.
template <class Interface> class Contado : public Interface {
  public:
    Contado() = default;
    Contado(const Contado &) = delete;
    Contado &operator=(const Contado &) = delete;

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_Referencias; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG restam = --m_Referencias;
        if (restam == 0) {
            delete this;
        }
        return restam;
    }

  protected:
    virtual ~Contado() = default;

  private:
    std::atomic<ULONG> m_Referencias{1};
    Vivo m_Vivo;
};

// The type information of an object, as far as it tells the name of its class.
class TipoNomeado final : public Contado<ITypeInfo> {
  public:
    explicit TipoNomeado(std::string nome) : m_Nome(std::move(nome)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        if (iid != IID_IUnknown && iid != IID_ITypeInfo) {
            return E_NOINTERFACE;
        }
        AddRef();
        *saida = static_cast<ITypeInfo *>(this);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID membro, BSTR *nome, BSTR *texto, DWORD *contexto,
                                               BSTR *arquivo) override
    {
        if (membro != MEMBERID_NIL) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        for (BSTR *saida : {texto, arquivo}) {
            if (saida != nullptr) {
                *saida = nullptr;
            }
        }
        if (contexto != nullptr) {
            *contexto = 0;
        }
        return nome == nullptr ? S_OK : NaBorda(IID_ITypeInfo, [&] { *nome = NovoBstr(m_Nome); });
    }
    HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT, FUNCDESC **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVarDesc(UINT, VARDESC **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(MEMBERID, BSTR *, UINT, UINT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT, HREFTYPE *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT, INT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR *, UINT, MEMBERID *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(PVOID, MEMBERID, WORD, DISPPARAMS *, VARIANT *, EXCEPINFO *, UINT *) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDllEntry(MEMBERID, INVOKEKIND, BSTR *, BSTR *, WORD *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE, ITypeInfo **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AddressOfMember(MEMBERID, INVOKEKIND, PVOID *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID, PVOID *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMops(MEMBERID, BSTR *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib **, UINT *) override { return E_NOTIMPL; }
    void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR *) override {}
    void STDMETHODCALLTYPE ReleaseFuncDesc(FUNCDESC *) override {}
    void STDMETHODCALLTYPE ReleaseVarDesc(VARDESC *) override {}

  private:
    std::string m_Nome;
};

class ListaEmTurnos final : public Contado<IEnumVARIANT> {
  public:
    explicit ListaEmTurnos(std::vector<Variante> elementos, std::size_t onde = 0)
        : m_Elementos(std::move(elementos)),
          m_Onde(onde)
    {
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        if (iid != IID_IUnknown && iid != IID_IEnumVARIANT) {
            return E_NOINTERFACE;
        }
        AddRef();
        *saida = static_cast<IEnumVARIANT *>(this);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG quantos, VARIANT *saida, ULONG *dados) override
    {
        ULONG feitos = 0;
        for (; feitos < quantos && m_Onde < m_Elementos.size(); ++feitos, ++m_Onde) {
            Variante(m_Elementos[m_Onde]).SoltaEm(saida[feitos]);
        }
        if (dados != nullptr) {
            *dados = feitos;
        }
        return feitos == quantos ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG quantos) override
    {
        const std::size_t restam = m_Elementos.size() - m_Onde;
        m_Onde += std::min<std::size_t>(quantos, restam);
        return quantos <= restam ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override
    {
        m_Onde = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        return NaBorda(IID_IEnumVARIANT, [&] { *saida = new ListaEmTurnos(m_Elementos, m_Onde); });
    }

  private:
    std::vector<Variante> m_Elementos;
    std::size_t m_Onde;
};

struct ClasseOferecida {
    std::type_index Classe;
    std::function<bool(::Objeto &)> EhDela;
    std::shared_ptr<const detalhe::TabelaDeMembros> Tabela;
};

std::vector<ClasseOferecida> &Classes()
{
    static std::vector<ClasseOferecida> classes;
    return classes;
}

std::map<std::string_view, std::function<Com<IDispatch>(const Ref<::Objeto> &)>> &Feitores()
{
    static std::map<std::string_view, std::function<Com<IDispatch>(const Ref<::Objeto> &)>> feitores;
    return feitores;
}

std::shared_ptr<const detalhe::TabelaDeMembros> TabelaDoObjeto(::Objeto &objeto)
{
    detalhe::OfereceTiposProprios();
    const auto &classes = Classes();
    const auto achada = std::find_if(classes.rbegin(), classes.rend(),
                                     [&](const ClasseOferecida &classe) { return classe.EhDela(objeto); });
    if (achada == classes.rend()) {
        throw Falha(NumeroFalha::MembroInexistente);
    }
    return achada->Tabela;
}

const std::shared_ptr<detalhe::Internos> &InternosVivos()
{
    static const auto vivos = std::make_shared<detalhe::Internos>();
    return vivos;
}

class Embrulho;

using Embrulhos = std::map<std::pair<const ::Objeto *, Lado>, Embrulho *>;

// Those that live; of each object one on each side.
const std::shared_ptr<Embrulhos> &EmbrulhosVivos()
{
    static const auto vivos = std::make_shared<Embrulhos>();
    return vivos;
}

class Embrulho final : public Contado<IDispatch> {
  public:
    Embrulho(Ref<::Objeto> alvo, Lado lado)
        : m_Interno(*this),
          m_Alvo(std::move(alvo)),
          m_Lado(lado),
          m_Tabela(TabelaDoObjeto(*m_Alvo)),
          m_Vivos(EmbrulhosVivos())
    {
        (*m_Vivos)[{m_Alvo.Ponteiro(), m_Lado}] = this;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        if (iid == IID_IUnknown || iid == IID_IDispatch) {
            *saida = static_cast<IDispatch *>(this);
        } else if (iid == __uuidof(IInterno)) {
            *saida = static_cast<IInterno *>(&m_Interno);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *quantos) override
    {
        if (quantos == nullptr) {
            return E_POINTER;
        }
        *quantos = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT qual, LCID, ITypeInfo **saida) override
    {
        if (saida == nullptr) {
            return E_POINTER;
        }
        *saida = nullptr;
        if (qual != 0) {
            return DISP_E_BADINDEX;
        }
        return NaBorda(IID_IDispatch, [&] {
            *saida = new TipoNomeado(m_Tabela->Classe.empty() ? std::string(m_Alvo->NomeTipo()) : m_Tabela->Classe);
        });
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR *nomes, UINT quantos, LCID, DISPID *numeros) override
    {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (nomes == nullptr || numeros == nullptr || quantos == 0 ||
            std::any_of(nomes, nomes + quantos, [](LPOLESTR nome) { return nome == nullptr; })) {
            return E_INVALIDARG;
        }
        bool todos = false;
        const HRESULT codigo = NaBorda(IID_IDispatch, [&] { todos = AchaNumeros(nomes, quantos, numeros); });
        if (FAILED(codigo) || todos) {
            return codigo;
        }
        std::fill(numeros, numeros + quantos, DISPID_UNKNOWN);
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID numero, REFIID iid, LCID, WORD modo, DISPPARAMS *parametros,
                                     VARIANT *resposta, EXCEPINFO *informacao, UINT *errado) override
    {
        if (iid != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (parametros == nullptr || !Coerentes(*parametros)) {
            return E_INVALIDARG;
        }
        if (resposta != nullptr) {
            VariantInit(resposta);
        }
        // Whoever calls may let go of the last reference meanwhile.
        const Com<IDispatch> eu(this);
        try {
            return Executa(numero, modo, *parametros, resposta);
        } catch (const ArgumentoErrado &argumento) {
            if (errado != nullptr) {
                *errado = argumento.Indice;
            }
            return argumento.Codigo;
        } catch (...) {
            const Falha falha = FalhaCorrente();
            if (informacao == nullptr) {
                return HResultDe(falha.Numero);
            }
            Preenche(falha, *informacao);
            return DISP_E_EXCEPTION;
        }
    }

    const Ref<::Objeto> &Alvo() const { return m_Alvo; }

  private:
    class Interno : public IInterno {
      public:
        explicit Interno(Embrulho &dono) : m_Dono(dono) {}
        virtual ~Interno() = default;
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **saida) override
        {
            return m_Dono.QueryInterface(iid, saida);
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return m_Dono.AddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return m_Dono.Release(); }
        ::Objeto *STDMETHODCALLTYPE Alvo() override { return m_Dono.m_Alvo.Ponteiro(); }
        Lado STDMETHODCALLTYPE DeQueLado() override { return m_Dono.m_Lado; }

      private:
        Embrulho &m_Dono;
    };

    ~Embrulho() override { m_Vivos->erase({m_Alvo.Ponteiro(), m_Lado}); }

    const detalhe::MembroOferecido *MembroDoNome(const std::string &nome) const
    {
        const auto &membros = m_Tabela->Membros;
        const auto achado = std::find_if(membros.begin(), membros.end(),
                                         [&](const auto &membro) { return IgualSemCaixa(membro.Nome, nome); });
        return achado == membros.end() ? nullptr : &*achado;
    }

    bool AchaNumeros(LPOLESTR *nomes, UINT quantos, DISPID *numeros)
    {
        const std::string nome = ParaUtf8(nomes[0]);
        const detalhe::MembroOferecido *membro = MembroDoNome(nome);
        if (membro == nullptr) {
            if (quantos > 1 || !m_Tabela->Outros || m_Tabela->Outros(*m_Alvo, nome).Nada()) {
                return false;
            }
            numeros[0] = NumeroProprio(nome);
            return true;
        }
        numeros[0] = membro->Numero;
        for (UINT i = 1; i < quantos; ++i) {
            const std::string argumento = ParaUtf8(nomes[i]);
            const auto achado = std::find_if(membro->Argumentos.begin(), membro->Argumentos.end(),
                                             [&](const std::string &este) { return IgualSemCaixa(este, argumento); });
            if (achado == membro->Argumentos.end()) {
                return false;
            }
            numeros[i] = static_cast<DISPID>(achado - membro->Argumentos.begin());
        }
        return true;
    }

    DISPID NumeroProprio(const std::string &nome)
    {
        const auto achado = std::find_if(m_Proprios.begin(), m_Proprios.end(),
                                         [&](const std::string &este) { return IgualSemCaixa(este, nome); });
        if (achado == m_Proprios.end()) {
            m_Proprios.push_back(nome);
            return PrimeiroProprio + static_cast<DISPID>(m_Proprios.size() - 1);
        }
        return PrimeiroProprio + static_cast<DISPID>(achado - m_Proprios.begin());
    }

    HRESULT Executa(DISPID numero, WORD modo, const DISPPARAMS &parametros, VARIANT *resposta)
    {
        constexpr WORD escrita = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
        Chamada chamada(parametros, resposta, m_Lado);
        if (numero >= PrimeiroProprio) {
            return ExecutaProprio(numero, modo, chamada, parametros, resposta);
        }
        const auto &membros = m_Tabela->Membros;
        const auto membro =
            std::find_if(membros.begin(), membros.end(), [&](const auto &este) { return este.Numero == numero; });
        if (membro == membros.end()) {
            return DISP_E_MEMBERNOTFOUND;
        }
        const bool escreve = (modo & escrita) != 0;
        const auto &acao = escreve ? membro->Escreve : membro->Le;
        if (!acao) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (escreve) {
            if (parametros.cArgs != membro->Indices + 1) {
                return DISP_E_BADPARAMCOUNT;
            }
        } else {
            if (membro->Propriedade && chamada.Quantos() > 0 && parametros.cNamedArgs == 0) {
                return ExecutaNoQueDa(acao, parametros, modo, resposta);
            }
            chamada.Nomeados(membro->Maximo);
            if (chamada.Quantos() > membro->Maximo || chamada.Quantos() < membro->Minimo) {
                return DISP_E_BADPARAMCOUNT;
            }
            for (std::size_t i = 0; i < membro->Minimo; ++i) {
                if (chamada.EhAusente(i)) {
                    throw ArgumentoErrado{chamada.IndiceDe(chamada.Argumento(i)), DISP_E_PARAMNOTOPTIONAL};
                }
            }
        }
        const Ref<::Objeto> alvo = m_Alvo;
        acao(*alvo, chamada);
        return S_OK;
    }

    HRESULT ExecutaProprio(DISPID numero, WORD modo, Chamada &chamada, const DISPPARAMS &parametros, VARIANT *resposta)
    {
        const auto qual = static_cast<std::size_t>(numero - PrimeiroProprio);
        if (qual >= m_Proprios.size() || (modo & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0) {
            return DISP_E_MEMBERNOTFOUND;
        }
        const Ref<::Objeto> proprio = m_Tabela->Outros(*m_Alvo, m_Proprios[qual]);
        if (proprio.Nada()) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (chamada.Quantos() > 0) {
            const auto acao = [&](::Objeto &, Chamada &sem) { sem.Responde(proprio); };
            return ExecutaNoQueDa(acao, parametros, modo, resposta);
        }
        chamada.Responde(proprio);
        return S_OK;
    }

    // Arguments of a member that takes none are an index of the object that it gives.
    HRESULT ExecutaNoQueDa(const detalhe::MembroOferecido::Acao &acao, const DISPPARAMS &parametros, WORD modo,
                           VARIANT *resposta)
    {
        const DISPPARAMS nenhum{};
        Variante dado;
        Chamada semArgumentos(nenhum, &dado.Bruta(), m_Lado);
        const Ref<::Objeto> alvo = m_Alvo;
        acao(*alvo, semArgumentos);
        if (dado.Tipo() != VT_DISPATCH || V_DISPATCH(&dado.Bruta()) == nullptr) {
            return DISP_E_BADPARAMCOUNT;
        }
        EXCEPINFO informacao{};
        UINT errado = 0;
        DISPPARAMS mesmos = parametros;
        const HRESULT codigo =
            V_DISPATCH(&dado.Bruta())
                ->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, modo, &mesmos, resposta, &informacao, &errado);
        if (FAILED(codigo)) {
            throw FalhaDe(codigo, informacao);
        }
        return S_OK;
    }

    Interno m_Interno;
    Ref<::Objeto> m_Alvo;
    Lado m_Lado;
    std::shared_ptr<const detalhe::TabelaDeMembros> m_Tabela;
    std::vector<std::string> m_Proprios;
    std::shared_ptr<Embrulhos> m_Vivos;
};

} // namespace

Vivo::Vivo() noexcept
{
    ++Contagem;
}

Vivo::~Vivo()
{
    --Contagem;
}

long Vivo::Quantos() noexcept
{
    return Contagem;
}

IInterno::IInterno() : m_Vivos(InternosVivos())
{
    m_Vivos->insert(this);
}

IInterno::~IInterno()
{
    m_Vivos->erase(this);
}

Chamada::Chamada(const DISPPARAMS &parametros, VARIANT *resposta, Lado lado)
    : m_Parametros(parametros),
      m_Resposta(resposta),
      m_Lado(lado)
{
    if (parametros.cNamedArgs == 1 && parametros.cArgs > 0 && parametros.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT) {
        m_Escrito = &parametros.rgvarg[0];
    }
    for (UINT i = parametros.cArgs; i > parametros.cNamedArgs; --i) {
        m_Argumentos.push_back(&parametros.rgvarg[i - 1]);
    }
    if (m_Escrito == nullptr && parametros.cArgs > 0) { // written by a client that does not say so
        m_Escrito = &parametros.rgvarg[0];
    }
}

UINT Chamada::IndiceDe(const VARIANT &argumento) const
{
    const VARIANT *primeiro = m_Parametros.rgvarg;
    const bool dado = primeiro != nullptr && std::greater_equal<>()(&argumento, primeiro) &&
                      std::less<>()(&argumento, primeiro + m_Parametros.cArgs);
    return dado ? static_cast<UINT>(&argumento - primeiro) : 0;
}

const VARIANT &Chamada::Argumento(std::size_t posicao) const
{
    static const Variante ausente = ParaVariante(Ausente{});
    return posicao < m_Argumentos.size() && m_Argumentos[posicao] != nullptr ? *m_Argumentos[posicao] : ausente.Bruta();
}

void Chamada::Nomeados(std::size_t quantos)
{
    for (UINT i = 0; i < m_Parametros.cNamedArgs; ++i) {
        const DISPID numero = m_Parametros.rgdispidNamedArgs[i];
        const auto posicao = static_cast<std::size_t>(numero);
        if (numero < 0 || posicao >= quantos || (posicao < m_Argumentos.size() && m_Argumentos[posicao] != nullptr)) {
            throw ArgumentoErrado{i, DISP_E_PARAMNOTFOUND};
        }
        if (posicao >= m_Argumentos.size()) {
            m_Argumentos.resize(posicao + 1);
        }
        m_Argumentos[posicao] = &m_Parametros.rgvarg[i];
    }
}

bool Chamada::EhAusente(std::size_t posicao) const
{
    const VARIANT &argumento = Argumento(posicao);
    try {
        return detalhe::EhAusente(argumento);
    } catch (const Falha &falha) {
        throw ArgumentoErrado{IndiceDe(argumento), CodigoDoArgumento(falha)};
    }
}

bool EhDoArgumento(const Falha &falha) noexcept
{
    if (falha.Fonte != NomeComponente) { // what the caller's own object raised when it was asked
        return false;
    }
    switch (falha.Numero) {
    case NumeroFalha::Estouro:
    case NumeroFalha::SubscritoForaDoIntervalo:
    case NumeroFalha::TipoIncompativel:
    case NumeroFalha::ObjetoNaoDefinido:
    case NumeroFalha::NuloInvalido:
    case NumeroFalha::ObjetoNecessario:
    case NumeroFalha::MembroInexistente:
        return true;
    default:
        return falha.Numero == NumeroDe(E_NOINTERFACE);
    }
}

HRESULT CodigoDoArgumento(const Falha &falha) noexcept
{
    return falha.Numero == NumeroFalha::Estouro ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
}

bool Coerentes(const DISPPARAMS &parametros) noexcept
{
    return parametros.cNamedArgs <= parametros.cArgs && (parametros.cArgs == 0 || parametros.rgvarg != nullptr) &&
           (parametros.cNamedArgs == 0 || parametros.rgdispidNamedArgs != nullptr);
}

namespace {

// Puts an array in the place of the caller's, which has elements of a type.
void DevolveArranjo(SAFEARRAY **lugar, VARTYPE tipo, Variante valor)
{
    constexpr USHORT presos = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
    if (V_VT(&valor.Bruta()) != (VT_ARRAY | tipo)) {
        if ((V_VT(&valor.Bruta()) & VT_ARRAY) == 0 || (tipo != VT_VARIANT && tipo != VT_DISPATCH)) {
            throw Falha(NumeroFalha::TipoIncompativel);
        }
        valor = detalhe::FazArranjo(tipo, detalhe::LeArranjo(valor.Bruta()));
    }
    SAFEARRAY *antigo = *lugar;
    if (antigo != nullptr && ((antigo->fFeatures & presos) != 0 || antigo->cLocks > 0)) {
        throw Falha(NumeroDe(DISP_E_ARRAYISLOCKED));
    }
    *lugar = std::exchange(V_ARRAY(&valor.Bruta()), antigo); // which goes with the value
    if (antigo == nullptr) {
        V_VT(&valor.Bruta()) = VT_EMPTY;
    } else {
        V_VT(&valor.Bruta()) = static_cast<VARTYPE>(VT_ARRAY | tipo);
    }
}

template <class T> T Estreito(double numero)
{
    const double inteiro = CDbl(std::nearbyint(numero)); // half to even, as the platform
    if (!(inteiro >= static_cast<double>(std::numeric_limits<T>::min()) &&
          inteiro <= static_cast<double>(std::numeric_limits<T>::max()))) {
        throw Falha(NumeroFalha::Estouro);
    }
    return static_cast<T>(inteiro);
}

} // namespace

void Chamada::DevolveEm(const VARIANT &referencia, Variante valor)
{
    if (V_VT(&referencia) == (VT_BYREF | VT_VARIANT)) {
        const VARIANT &alvo = detalhe::Referido(referencia);
        if ((V_VT(&alvo) & VT_BYREF) == 0) { // a variable of the caller's, of whatever type
            auto &variavel = const_cast<VARIANT &>(alvo);
            Exige(VariantClear(&variavel));
            valor.SoltaEm(variavel);
            return;
        }
    }
    const VARIANT *atual = &detalhe::Referido(referencia);
    if ((V_VT(atual) & VT_BYREF) == 0) {
        return;
    }
    const auto tipo = static_cast<VARTYPE>(V_VT(atual) & ~VT_BYREF);
    if ((tipo & VT_ARRAY) != 0) {
        DevolveArranjo(V_ARRAYREF(atual), static_cast<VARTYPE>(tipo & VT_TYPEMASK), std::move(valor));
        return;
    }
    const VARIANT &novo = valor.Bruta();
    switch (tipo) {
    case VT_BOOL:
        *V_BOOLREF(atual) = DeVariante<bool>(novo) ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case VT_UI1:
        *V_UI1REF(atual) = DeVariante<std::uint8_t>(novo);
        break;
    case VT_I1:
        *V_UI1REF(atual) = static_cast<BYTE>(Estreito<signed char>(DeVariante<double>(novo)));
        break;
    case VT_I2:
        *V_I2REF(atual) = DeVariante<std::int16_t>(novo);
        break;
    case VT_UI2:
        *V_UI2REF(atual) = Estreito<USHORT>(DeVariante<double>(novo));
        break;
    case VT_I4:
    case VT_INT:
        *V_I4REF(atual) = DeVariante<std::int32_t>(novo);
        break;
    case VT_UI4:
    case VT_UINT:
        *V_UI4REF(atual) = Estreito<ULONG>(DeVariante<double>(novo));
        break;
    case VT_I8:
        *V_I8REF(atual) = DeVariante<std::int32_t>(novo);
        break;
    case VT_UI8:
        *V_UI8REF(atual) = Estreito<ULONG>(DeVariante<double>(novo));
        break;
    case VT_R4:
        *V_R4REF(atual) = static_cast<float>(DeVariante<double>(novo));
        break;
    case VT_R8:
        *V_R8REF(atual) = DeVariante<double>(novo);
        break;
    case VT_CY:
        Exige(VarCyFromR8(DeVariante<double>(novo), V_CYREF(atual)));
        break;
    case VT_DECIMAL:
        Exige(VarDecFromR8(DeVariante<double>(novo), V_DECIMALREF(atual)));
        break;
    case VT_DATE:
        *V_DATEREF(atual) = DeVariante<Data>(novo).Valor;
        break;
    case VT_BSTR: {
        BSTR texto = NovoBstr(DeVariante<std::string>(novo));
        SysFreeString(std::exchange(*V_BSTRREF(atual), texto));
        break;
    }
    case VT_DISPATCH: {
        Com<IDispatch> objeto = LeObjeto(novo);
        Com<IDispatch>::Adota(std::exchange(*V_DISPATCHREF(atual), objeto.Solta()));
        break;
    }
    case VT_UNKNOWN: {
        Com<IDispatch> objeto = LeObjeto(novo);
        Com<IUnknown>::Adota(std::exchange(*V_UNKNOWNREF(atual), objeto.Solta()));
        break;
    }
    default:
        throw Falha(NumeroFalha::TipoIncompativel);
    }
}

namespace detalhe {

void RegistraTabela(std::type_index classe, std::function<bool(::Objeto &)> ehDela, TabelaDeMembros tabela)
{
    DISPID numero = 0;
    for (MembroOferecido &membro : tabela.Membros) {
        if (membro.Numero > 0 || membro.Numero == DISPID_UNKNOWN) { // those of a base class are counted anew
            membro.Numero = ++numero;
        }
    }
    auto &classes = Classes();
    std::erase_if(classes, [&](const ClasseOferecida &outra) { return outra.Classe == classe; });
    classes.push_back({classe, std::move(ehDela), std::make_shared<const TabelaDeMembros>(std::move(tabela))});
}

const TabelaDeMembros &TabelaDe(std::type_index classe)
{
    for (const ClasseOferecida &oferecida : Classes()) {
        if (oferecida.Classe == classe) {
            return *oferecida.Tabela;
        }
    }
    throw Falha(NumeroFalha::MembroInexistente);
}

} // namespace detalhe

void OfereceComo(const std::type_info &classe, std::function<Com<IDispatch>(const Ref<::Objeto> &)> faz)
{
    Feitores()[classe.name()] = std::move(faz);
}

Com<IDispatch> Embrulha(const Ref<::Objeto> &objeto, Lado lado)
{
    if (objeto.Nada()) {
        return {};
    }
    const auto &vivos = *EmbrulhosVivos();
    // What the component has given away already comes back as it was, from whatever side.
    for (const Lado este : {Lado::Componente, lado}) {
        const auto vivo = vivos.find({objeto.Ponteiro(), este});
        if (vivo != vivos.end()) {
            return Com<IDispatch>(vivo->second);
        }
    }
    const ::Objeto &alvo = *objeto;
    if (const auto feitor = Feitores().find(typeid(alvo).name()); feitor != Feitores().end()) {
        return feitor->second(objeto);
    }
    return Com<IDispatch>::Adota(new Embrulho(objeto, lado));
}

Com<IDispatch> Oferece(const Ref<::Objeto> &objeto, Lado lado)
{
    if (const auto *remoto = dynamic_cast<const ObjetoRemoto *>(objeto.Ponteiro())) {
        return remoto->Objeto();
    }
    if (dynamic_cast<const Registro *>(objeto.Ponteiro()) != nullptr) {
        return OfereceRegistro(ComoTipo<Registro>(objeto), lado);
    }
    return Embrulha(objeto, lado);
}

Com<IInterno> InternoDe(const Com<IDispatch> &objeto)
{
    // An object may answer with itself whatever it is asked for, and another copy of the component has the same
    // identifier.
    Com<IInterno> interno = objeto.Como<IInterno>();
    if (!InternosVivos()->contains(interno.Ponteiro())) {
        return {};
    }
    return interno;
}

Ref<::Objeto> Interno(const Com<IDispatch> &objeto, Lado lado)
{
    const Com<IInterno> interno = InternoDe(objeto);
    if (!interno || (interno->DeQueLado() == Lado::Hospedeiro && lado == Lado::Componente)) {
        return {};
    }
    return Eu(*interno->Alvo());
}

Com<IUnknown> Enumerador(std::vector<Variante> elementos)
{
    return Com<IUnknown>::Adota(new ListaEmTurnos(std::move(elementos)));
}

} // namespace nativo
