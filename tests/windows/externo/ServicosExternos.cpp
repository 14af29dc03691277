#include "tests/windows/externo/ServicosExternos.h"

#include <memory>

namespace nativo {

namespace {

constexpr std::size_t LinhasPorPagina = 2;

std::string Maiusculas(const std::string &texto)
{
    std::wstring largo = Largo(texto);
    CharUpperBuffW(largo.data(), static_cast<DWORD>(largo.size()));
    return Estreito(largo);
}

} // namespace

ServicosExternos::ServicosExternos(Diario &diario) : m_Diario(diario)
{
    const auto equipamento = [&](std::int32_t numero, const char *codigo, const char *tipo, const char *descricao,
                                 std::int16_t velocidade) {
        auto novo = RegistroExterno::Novo("EquiptoED", diario);
        novo->Poe("NroIntEquip", numero)
            .Poe("ClienteInc", Cliente)
            .Poe("SetorInc", Setor)
            .Poe("Codigo", codigo)
            .Poe("SubCodigo", "")
            .Poe("Descricao", descricao)
            .Poe("CodMunic", std::int32_t{4314902})
            .Poe("TipoVia", "U")
            .Poe("TipoEquip", tipo)
            .Poe("VelocPermitida", velocidade)
            .Poe("ArquivoLayout", "NENHUM")
            .Poe("TemImagemEntrelacada", std::uint8_t{2})
            .Poe("Modelo", "Modelo " + std::string(tipo))
            .Poe("TemLimiteDif", std::uint8_t{2})
            .Poe("TemPerfilMag", std::uint8_t{2})
            .Poe("Ativo", std::uint8_t{1})
            .Poe("ClienteTrans", Cliente)
            .Poe("OperadorTrans", 1234567.0)
            .Poe("DataTrans", std::int32_t{20260105})
            .Poe("HoraTrans", std::int32_t{141503})
            .Poe("TipoAgente", std::uint8_t{1});
        m_Equipamentos[numero] = novo;
        return novo;
    };
    const auto afericao = [&](std::int32_t numero, const char *nome, double verificacao, double vencimento) {
        auto nova = RegistroExterno::Novo("AfericaoED", diario);
        nova->Poe("NroIntAfericao", static_cast<double>(numero))
            .Poe("Numero", nome)
            .Poe("Marca", "12345678")
            .Poe("DataVerificacao", Var::Data(verificacao))
            .Poe("DataVencimento", Var::Data(vencimento))
            .Poe("Ativo", std::uint8_t{1})
            .Poe("NroIntImgCertif", 501.0)
            .Poe("TipoAfer", std::uint8_t{1})
            .Poe("PortDimel", "");
        return nova;
    };
    const auto sensor = [&](std::int32_t numero, const char *local) {
        auto novo = RegistroExterno::Novo("SensorED", diario);
        novo->Poe("NroIntSensor", numero)
            .Poe("NroSensor", std::int16_t{1})
            .Poe("CodLograd", std::int32_t{77})
            .Poe("EndCep", std::int32_t{90010020})
            .Poe("EndNro", std::int32_t{1500})
            .Poe("EndCompl", "")
            .Poe("EndDescr", "Rua Bento Gonçalves, 1500")
            .Poe("SentidoVia", "C")
            .Poe("Ativo", std::uint8_t{1})
            .Poe("LocalInfr", local);
        return novo;
    };
    m_Documentos[501] = "%PDF-1.4 certificado 501";
    auto comSensor = sensor(31, "Rua A");
    comSensor->Junta("Afericoes", afericao(41, "1001", 46032, 46397)); // 10/01/2026 to 10/01/2027
    equipamento(7, "RF-01", "R", "Radar da entrada", 60)->Junta("Sensores", comSensor);
    equipamento(8, "LB-02", "L", "Lombada da escola", 40);
    equipamento(9, "RF-03", "R", "Radar da saída", 80);
    auto semSensores = sensor(32, "");
    semSensores->Junta("Afericoes", afericao(42, "2002", 46032, 46397));
    equipamento(10, "ET-04", "E", "Etilômetro da barreira", 0)->Junta("Sensores", semSensores);
    equipamento(11, "ET-05", "E", "Etilômetro sem aferição", 0);
}

Contado<ObjetoExterno> ServicosExternos::Gateway()
{
    auto gateway = ObjetoExterno::Novo("Gateway", m_Diario);
    gateway->Faz("CriaObjetoRN", [this](const ChamadaRecebida &chamada) {
        if (chamada.Texto(0) != "VOR" || chamada.Texto(2) != "ZTVORLIB" || chamada.Texto(3) != "4") {
            throw FalhaExterna{5, "Gateway", "serviço desconhecido: " + chamada.Retrato()};
        }
        return Var(Proxy(chamada.Texto(1)));
    });
    return gateway;
}

Contado<ObjetoExterno> ServicosExternos::Proxy(const std::string &servico)
{
    struct Ultima {
        Var Retorno;
        std::string Frase;
    };
    const auto ultima = std::make_shared<Ultima>();
    auto proxy = ObjetoExterno::Novo(servico, m_Diario);
    proxy->Faz("ObtemRetorno", [ultima](const ChamadaRecebida &) { return ultima->Retorno; });
    proxy->Faz("MostraErro", [this, ultima](const ChamadaRecebida &) {
        m_Diario.Conta("recusa mostrada: " + ultima->Frase);
        return Var();
    });
    proxy->Faz("ExecutaMetodo", [this, servico, ultima](const ChamadaRecebida &chamada) {
        if (!chamada.PorReferencia(0) || chamada.Objeto(0)) {
            throw FalhaExterna{5, servico, "o contexto não veio por referência e Nothing"};
        }
        const std::string operacao = chamada.Texto(1);
        // One element, from 0 to 0, which refers to the variable of the caller.
        VARIANT &parametros = chamada.Bruto(2);
        SAFEARRAY *vetor = nullptr;
        if (parametros.vt == (VT_BYREF | VT_ARRAY | VT_VARIANT)) {
            vetor = *parametros.pparray;
        } else if (parametros.vt == (VT_BYREF | VT_VARIANT) && parametros.pvarVal->vt == (VT_ARRAY | VT_VARIANT)) {
            vetor = parametros.pvarVal->parray;
        }
        LONG inicio = -1;
        LONG fim = -1;
        VARIANT *elemento = nullptr;
        if (vetor == nullptr || SafeArrayGetDim(vetor) != 1 || FAILED(SafeArrayGetLBound(vetor, 1, &inicio)) ||
            FAILED(SafeArrayGetUBound(vetor, 1, &fim)) || inicio != 0 || fim != 0) {
            throw FalhaExterna{9, servico, "o vetor de parâmetros não vai de 0 a 0"};
        }
        SafeArrayPtrOfIndex(vetor, &inicio, reinterpret_cast<void **>(&elemento));
        if ((elemento->vt & VT_BYREF) == 0) {
            throw FalhaExterna{13, servico, "o elemento não se refere à variável de quem chamou"};
        }
        const Contado<IDispatch> pedido = Var::De(*elemento).Objeto();
        const auto recusa = m_Recusas.find(operacao);
        ultima->Retorno = Executa(servico, operacao, pedido.Ponteiro());
        if (recusa != m_Recusas.end()) {
            ultima->Frase = recusa->second;
            m_Recusas.erase(recusa);
            return Var(false);
        }
        // The caller's variable gets another object, as the services of the contract may give it.
        if (ultima->Retorno.Bruta().vt == VT_DISPATCH && operacao == "inclui") {
            ChamadaRecebida::DevolveEm(*elemento, ultima->Retorno);
        }
        return Var(true);
    });
    return proxy;
}

Contado<RegistroExterno> ServicosExternos::Pedido(const std::string &servico, const std::string &operacao,
                                                  const std::string &classe, IDispatch *pedido)
{
    const auto registro = RegistroExterno::Copia(classe, pedido, m_Diario);
    m_Diario.Conta(servico + "." + operacao + " " + registro->Retrato());
    return registro;
}

Var ServicosExternos::Executa(const std::string &servico, const std::string &operacao, IDispatch *pedido)
{
    const auto le = [&](const char *classe) { return Pedido(servico, operacao, classe, pedido); };
    if (servico == "RelatorioRN" && operacao == "consultaRelatorioRVOR011") {
        return Certificado(le("RelatorioAfericaoED"));
    }
    if (servico != "EquiptoRN") {
        throw FalhaExterna{5, servico, "sem a operação " + operacao};
    }
    if (m_Recusas.count(operacao) != 0) {
        le(operacao == "lista2" ? "ListaEquiptoED" : "EquiptoED");
        return {};
    }
    if (operacao == "lista2") {
        return Lista(*le("ListaEquiptoED"));
    }
    if (operacao == "consultaSimplesAfericaoVigente") {
        return Vigente(*le("ConsultaAfericaoED"));
    }
    const Contado<RegistroExterno> equipamento = le("EquiptoED");
    if (operacao == "inclui") {
        return Inclui(equipamento);
    }
    const std::int32_t numero = equipamento->Le("NroIntEquip").Inteiro();
    if (m_Equipamentos.count(numero) == 0) {
        throw FalhaExterna{3021, servico, "sem o equipamento " + std::to_string(numero)};
    }
    RegistroExterno &guardado = *m_Equipamentos.at(numero);
    if (operacao == "altera") {
        Altera(*equipamento);
    } else if (operacao == "desativa" || operacao == "reativa") {
        guardado.Poe("Ativo", static_cast<std::uint8_t>(operacao == "reativa" ? 1 : 2));
    } else if (operacao == "consulta" || operacao == "consultaSimples") {
        return Var(RegistroExterno::Copia("EquiptoED", &guardado, m_Diario));
    } else {
        throw FalhaExterna{5, servico, "sem a operação " + operacao};
    }
    return {};
}

Var ServicosExternos::Lista(const RegistroExterno &criterios)
{
    auto resposta = RegistroExterno::Novo("ListaEquiptoED", m_Diario);
    const bool trabFoto = criterios.Le("IndTrabFoto").Inteiro() == 1;
    const auto combina = [&](const RegistroExterno &equipamento, const char *membro) {
        return !criterios.Escrito(membro) ||
               Maiusculas(criterios.Le(membro).Texto()) == Maiusculas(equipamento.Le(membro).Texto());
    };
    std::size_t linhas = 0;
    for (const auto &[numero, equipamento] : m_Equipamentos) {
        const bool deFoto = std::string("EUBA").find(equipamento->Le("TipoEquip").Texto()) == std::string::npos;
        if (numero < criterios.Le("ProxNroIntEquip").Inteiro() || deFoto != trabFoto ||
            !combina(*equipamento, "ClienteInc") || !combina(*equipamento, "Codigo") ||
            !combina(*equipamento, "SubCodigo") || !combina(*equipamento, "TipoEquip") ||
            !combina(*equipamento, "TipoAgente") || !combina(*equipamento, "Ativo")) {
            continue;
        }
        if (++linhas > LinhasPorPagina) {
            resposta->Poe("ProxNroIntEquip", numero);
            break;
        }
        resposta->Junta("Equipamentos", RegistroExterno::Copia("EquiptoED", equipamento.Ponteiro(), m_Diario));
    }
    return Var(resposta);
}

void ServicosExternos::Numera(RegistroExterno &equipamento)
{
    // Collections are copied when they are read, so what is new is put together again.
    auto sensores = ColecaoExterna::Nova(m_Diario);
    for (const Contado<RegistroExterno> &sensor : equipamento.Itens("Sensores")) {
        if (sensor->Le("NroIntSensor").Inteiro() == 0) {
            sensor->Poe("NroIntSensor", ++m_Ultimo);
        }
        auto afericoes = ColecaoExterna::Nova(m_Diario);
        for (const Contado<RegistroExterno> &afericao : sensor->Itens("Afericoes")) {
            if (afericao->Le("NroIntAfericao").Numero() == 0) {
                afericao->Poe("NroIntAfericao", static_cast<double>(++m_Ultimo));
            }
            afericoes->Itens.emplace_back(Contado<IDispatch>(afericao.Ponteiro()));
        }
        sensor->Poe("Afericoes", Var(afericoes));
        sensores->Itens.emplace_back(Contado<IDispatch>(sensor.Ponteiro()));
    }
    equipamento.Poe("Sensores", Var(sensores));
}

Var ServicosExternos::Inclui(const Contado<RegistroExterno> &pedido)
{
    const std::int32_t numero = ++m_Ultimo;
    pedido->Poe("NroIntEquip", numero)
        .Poe("Ativo", std::uint8_t{1})
        .Poe("ClienteTrans", Cliente)
        .Poe("OperadorTrans", 1234567.0)
        .Poe("DataTrans", std::int32_t{20260105})
        .Poe("HoraTrans", std::int32_t{141503});
    m_Equipamentos[numero] = pedido;
    return Var(RegistroExterno::Copia("EquiptoED", pedido.Ponteiro(), m_Diario));
}

void ServicosExternos::Altera(const RegistroExterno &pedido)
{
    RegistroExterno &guardado = *m_Equipamentos.at(pedido.Le("NroIntEquip").Inteiro());
    for (const char *membro : {"Codigo", "SubCodigo", "Descricao", "CodMunic", "TipoVia", "TipoEquip", "VelocPermitida",
                               "ArquivoLayout", "TemImagemEntrelacada", "Modelo", "TemLimiteDif", "TemPerfilMag",
                               "NroIntRejLimDif", "Ativo", "TipoAgente", "txtObsNotif"}) {
        if (pedido.Escrito(membro)) {
            guardado.Poe(membro, pedido.Le(membro));
        }
    }
    // A sensor that travels takes the place of the one of its number.
    const auto mandados = pedido.Itens("Sensores");
    auto sensores = ColecaoExterna::Nova(m_Diario);
    for (const Contado<RegistroExterno> &antigo : guardado.Itens("Sensores")) {
        const std::int32_t numero = antigo->Le("NroIntSensor").Inteiro();
        for (const Contado<RegistroExterno> &mandado : mandados) {
            if (mandado->Le("NroIntSensor").Inteiro() == numero) {
                for (const Contado<RegistroExterno> &afericao : mandado->Itens("Afericoes")) {
                    antigo->Junta("Afericoes", afericao);
                }
                antigo->Poe("LocalInfr", mandado->Le("LocalInfr"));
            }
        }
        sensores->Itens.emplace_back(Contado<IDispatch>(antigo.Ponteiro()));
    }
    for (const Contado<RegistroExterno> &mandado : mandados) {
        if (mandado->Le("NroIntSensor").Inteiro() == 0) {
            sensores->Itens.emplace_back(Contado<IDispatch>(mandado.Ponteiro()));
        }
    }
    guardado.Poe("Sensores", Var(sensores));
    Numera(guardado);
}

Var ServicosExternos::Vigente(const RegistroExterno &consulta)
{
    const double dia = consulta.Le("DtInfracao").Numero();
    auto vigente = RegistroExterno::Novo("AfericaoED", m_Diario);
    const auto equipamento = m_Equipamentos.find(consulta.Le("NroIntEquip").Inteiro());
    if (equipamento != m_Equipamentos.end()) {
        for (const Contado<RegistroExterno> &sensor : equipamento->second->Itens("Sensores")) {
            for (const Contado<RegistroExterno> &afericao : sensor->Itens("Afericoes")) {
                if (afericao->Le("DataVerificacao").Numero() <= dia && dia <= afericao->Le("DataVencimento").Numero()) {
                    vigente = afericao;
                }
            }
        }
    }
    return Var(vigente);
}

Var ServicosExternos::Certificado(const Contado<RegistroExterno> &pedido)
{
    pedido->Poe("Documento", "%PDF-1.4 Aferição " + pedido->Le("CodOat").Texto() + "/" + pedido->Le("Serie").Texto() +
                                 " " + pedido->Le("TxtIdent").Texto());
    return Var(pedido);
}

std::int32_t ServicosExternos::GuardaDocumento(const std::string &conteudo)
{
    const std::int32_t numero = ++m_Ultimo;
    m_Documentos[numero] = conteudo;
    return numero;
}

std::int32_t ServicosExternos::NumeroDoCodigo(const std::string &cliente, const std::string &codigo,
                                              const std::string &tipo) const
{
    for (const auto &[numero, equipamento] : m_Equipamentos) {
        if (equipamento->Le("ClienteInc").Texto() == cliente &&
            Maiusculas(equipamento->Le("Codigo").Texto()) == codigo && equipamento->Le("Ativo").Inteiro() == 1 &&
            (tipo.empty() || equipamento->Le("TipoEquip").Texto() == tipo)) {
            return numero;
        }
    }
    return 0;
}

} // namespace nativo
