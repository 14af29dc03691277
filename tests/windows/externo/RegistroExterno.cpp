#include "tests/windows/externo/RegistroExterno.h"

#include "tests/windows/externo/ObjetoTardio.h"

namespace nativo {

namespace {

struct DescricaoDeMembro {
    const char *Nome;
    char Tipo; // l 32 bits, i 16, b 8 without sign, d floating, t date, s text, c collection
    const char *Itens = "";
};

struct DescricaoDeClasse {
    const char *Nome;
    std::vector<DescricaoDeMembro> Membros;
};

// The library as its documentation tells it.
const std::vector<DescricaoDeClasse> &Biblioteca()
{
    static const std::vector<DescricaoDeClasse> biblioteca = {
        {"EquiptoED",
         {{"NroIntEquip", 'l'},
          {"ClienteInc", 's'},
          {"SetorInc", 's'},
          {"Codigo", 's'},
          {"SubCodigo", 's'},
          {"Descricao", 's'},
          {"CodMunic", 'l'},
          {"TipoVia", 's'},
          {"TipoEquip", 's'},
          {"VelocPermitida", 'i'},
          {"ArquivoLayout", 's'},
          {"TemImagemEntrelacada", 'b'},
          {"Modelo", 's'},
          {"TemLimiteDif", 'b'},
          {"TemPerfilMag", 'b'},
          {"NroIntRejLimDif", 'l'},
          {"Ativo", 'b'},
          {"ClienteTrans", 's'},
          {"OperadorTrans", 'd'},
          {"DataTrans", 'l'},
          {"HoraTrans", 'l'},
          {"Sensores", 'c', "SensorED"},
          {"TipoAgente", 'b'},
          {"txtObsNotif", 's'},
          {"ListaLimiteDif", 'c', "LimiteDifED"},
          {"ListaDiaEspecifico", 'c', "DiaEspecificoED"}}},
        {"ListaEquiptoED",
         {{"Equipamentos", 'c', "EquiptoED"},
          {"ClienteInc", 's'},
          {"SetorInc", 's'},
          {"Codigo", 's'},
          {"SubCodigo", 's'},
          {"TipoEquip", 's'},
          {"Ativo", 'b'},
          {"TipoAgente", 'b'},
          {"ProxNroIntEquip", 'l'},
          {"IndTrabFoto", 'b'}}},
        {"SensorED",
         {{"Afericoes", 'c', "AfericaoED"},
          {"NroIntSensor", 'l'},
          {"NroSensor", 'i'},
          {"CodLograd", 'l'},
          {"EndCep", 'l'},
          {"EndNro", 'l'},
          {"EndCompl", 's'},
          {"EndDescr", 's'},
          {"SentidoVia", 's'},
          {"Ativo", 'b'},
          {"LocalInfr", 's'}}},
        {"AfericaoED",
         {{"NroIntAfericao", 'd'},
          {"Numero", 's'},
          {"Marca", 's'},
          {"DataVerificacao", 't'},
          {"DataVencimento", 't'},
          {"Ativo", 'b'},
          {"NroIntImgCertif", 'd'},
          {"TipoAfer", 'b'},
          {"PortDimel", 's'}}},
        {"LimiteDifED",
         {{"NroInt", 'l'},
          {"NroIntEquip", 'l'},
          {"Dia", 'b'},
          {"HoraInicio", 'l'},
          {"HoraFim", 'l'},
          {"VelocPerm", 'i'},
          {"VelocMin", 'i'},
          {"Ativo", 'b'},
          {"TipoLimite", 'b'}}},
        {"DiaEspecificoED",
         {{"NroInt", 'l'},
          {"NroIntEquip", 'l'},
          {"Data", 't'},
          {"HoraInicio", 'l'},
          {"HoraFim", 'l'},
          {"VelocPerm", 'i'},
          {"VelocMin", 'i'},
          {"Ativo", 'b'}}},
        {"ConsultaAfericaoED", {{"DtInfracao", 't'}, {"NroIntEquip", 'l'}, {"TipoConsulta", 'i'}}},
        {"RelatorioAfericaoED", {{"CodOat", 'l'}, {"Serie", 's'}, {"TxtIdent", 's'}, {"Documento", 's'}}},
    };
    return biblioteca;
}

VARTYPE TipoDe(char letra)
{
    switch (letra) {
    case 'l':
        return VT_I4;
    case 'i':
        return VT_I2;
    case 'b':
        return VT_UI1;
    case 'd':
        return VT_R8;
    case 't':
        return VT_DATE;
    case 's':
        return VT_BSTR;
    default:
        return VT_DISPATCH;
    }
}

// What a member of that type is before it is written.
Var DeInicio(char letra)
{
    Var inicio;
    inicio.Bruta().vt = TipoDe(letra);
    return inicio;
}

} // namespace

ColecaoExterna::ColecaoExterna(Diario &diario) : ObjetoExterno("Collection", diario)
{
    Calado();
    const auto posicao = [this](const ChamadaRecebida &chamada) {
        const std::int32_t pedida = chamada.Inteiro(0);
        if (pedida < 1 || pedida > static_cast<std::int32_t>(Itens.size())) {
            throw FalhaExterna{9, "Collection", "posição fora do intervalo"};
        }
        return static_cast<std::ptrdiff_t>(pedida - 1);
    };
    Faz("Item", [this, posicao](const ChamadaRecebida &chamada) {
        return Var(Itens[static_cast<std::size_t>(posicao(chamada))]);
    }).Padrao();
    Faz("Count", [this](const ChamadaRecebida &) { return Var(static_cast<std::int32_t>(Itens.size())); });
    Faz("Add", [this](const ChamadaRecebida &chamada) {
        Itens.push_back(chamada.Objeto(0));
        return Var();
    });
    Faz("Remove", [this, posicao](const ChamadaRecebida &chamada) {
        Itens.erase(Itens.begin() + posicao(chamada));
        return Var();
    });
}

RegistroExterno::RegistroExterno(const std::string &classe, Diario &diario) : ObjetoExterno(classe, diario)
{
    Calado();
    for (const DescricaoDeClasse &descricao : Biblioteca()) {
        if (classe == descricao.Nome) {
            for (const DescricaoDeMembro &membro : descricao.Membros) {
                m_Membros.push_back({membro.Nome, membro.Tipo, membro.Itens, DeInicio(membro.Tipo), false});
            }
        }
    }
    if (m_Membros.empty()) {
        throw FalhaExterna{429, "ZTVORLIB", "sem a classe " + classe};
    }
    for (std::size_t qual = 0; qual < m_Membros.size(); ++qual) {
        Faz(m_Membros[qual].Nome, [this, qual](const ChamadaRecebida &chamada) {
            if (chamada.Escreve()) {
                Recebe(m_Membros[qual], chamada.Arg(0));
            }
            return m_Membros[qual].Valor;
        });
    }
}

Contado<RegistroExterno> RegistroExterno::Novo(const std::string &classe, Diario &diario)
{
    return Contado<RegistroExterno>::Adota(new RegistroExterno(classe, diario));
}

std::vector<std::string> RegistroExterno::Classes()
{
    std::vector<std::string> nomes;
    for (const DescricaoDeClasse &descricao : Biblioteca()) {
        nomes.emplace_back(descricao.Nome);
    }
    return nomes;
}

void RegistroExterno::Recebe(Membro &membro, const Var &valor)
{
    membro.Valor = membro.Tipo == 'c' ? Var(valor.Objeto()) : valor.Como(TipoDe(membro.Tipo));
    membro.Escrito = true;
}

const RegistroExterno::Membro &RegistroExterno::Acha(const std::string &membro) const
{
    for (const Membro &este : m_Membros) {
        if (este.Nome == membro) {
            return este;
        }
    }
    throw FalhaExterna{438, Classe(), membro};
}

RegistroExterno::Membro &RegistroExterno::Acha(const std::string &membro)
{
    return const_cast<Membro &>(static_cast<const RegistroExterno *>(this)->Acha(membro));
}

RegistroExterno &RegistroExterno::Poe(const std::string &membro, const Var &valor)
{
    Recebe(Acha(membro), valor);
    return *this;
}

std::vector<Contado<RegistroExterno>> RegistroExterno::Itens(const std::string &membro) const
{
    const Membro &colecao = Acha(membro);
    std::vector<Contado<RegistroExterno>> itens;
    const ObjetoTardio objeto(colecao.Valor);
    const std::int32_t quantos = objeto ? objeto.Chama("Count").Inteiro() : 0;
    for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
        const Contado<IDispatch> item = objeto.Chama("Item", {posicao}).Objeto();
        itens.push_back(Copia(colecao.ClasseDosItens, item.Ponteiro(), DiarioDele()));
    }
    return itens;
}

RegistroExterno &RegistroExterno::Junta(const std::string &membro, const Contado<RegistroExterno> &item)
{
    Membro &colecao = Acha(membro);
    if (!colecao.Valor.Objeto()) {
        Recebe(colecao, Var(ColecaoExterna::Nova(DiarioDele())));
    }
    ObjetoTardio(colecao.Valor).Chama("Add", {Var(item)});
    return *this;
}

Contado<RegistroExterno> RegistroExterno::Copia(const std::string &classe, IDispatch *registro, Diario &diario)
{
    if (registro == nullptr) {
        throw FalhaExterna{91, "ZTVORLIB", "Nothing no lugar de " + classe};
    }
    auto copia = Novo(classe, diario);
    const auto *nosso = dynamic_cast<RegistroExterno *>(registro);
    const ObjetoTardio alheio{Contado<IDispatch>(registro)};
    for (Membro &membro : copia->m_Membros) {
        if (nosso != nullptr) {
            if (nosso->Classe() != classe) {
                throw FalhaExterna{13, "ZTVORLIB", nosso->Classe() + " no lugar de " + classe};
            }
            if (!nosso->Escrito(membro.Nome)) {
                continue;
            }
        }
        const Var valor = nosso != nullptr ? nosso->Le(membro.Nome) : alheio.Chama(membro.Nome);
        if (membro.Tipo != 'c') {
            if (valor.Bruta().vt != VT_EMPTY) { // what was left unset reads as nothing at all
                copia->Recebe(membro, valor);
            }
        } else if (const ObjetoTardio itens(valor); itens) {
            const std::int32_t quantos = itens.Chama("Count").Inteiro();
            copia->Recebe(membro, Var(ColecaoExterna::Nova(diario)));
            for (std::int32_t posicao = 1; posicao <= quantos; ++posicao) {
                const Contado<IDispatch> item = itens.Chama("Item", {posicao}).Objeto();
                ObjetoTardio(membro.Valor).Chama("Add", {Var(Copia(membro.ClasseDosItens, item.Ponteiro(), diario))});
            }
        }
    }
    return copia;
}

std::string RegistroExterno::Retrato() const
{
    std::string retrato;
    for (const Membro &membro : m_Membros) {
        if (!membro.Escrito) {
            continue;
        }
        retrato += (retrato.empty() ? "" : ", ") + membro.Nome + "=";
        if (membro.Tipo != 'c') {
            retrato += membro.Valor.Retrato();
            continue;
        }
        retrato += "[";
        const char *separador = "";
        for (const Contado<RegistroExterno> &item : Itens(membro.Nome)) {
            retrato += separador + item->Retrato();
            separador = ", ";
        }
        retrato += "]";
    }
    return Classe() + "{" + retrato + "}";
}

} // namespace nativo
