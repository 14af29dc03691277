#include "services/NomesCampos.h"

#include <QStringList>

#include <map>

namespace mesa {

namespace {

const std::map<std::string_view, std::string_view> Nomes = {
    {"ArquivoLayout", "layout dos arquivos"},
    {"Bairro", "bairro"},
    {"Cep", "CEP"},
    {"ClienteInc", "cliente"},
    {"CodCliente", "código do cliente"},
    {"CodLograd", "logradouro"},
    {"CodMunic", "município"},
    {"Codigo", "código"},
    {"Conteudo", "conteúdo"},
    {"Data", "data"},
    {"DataVencimento", "data de vencimento"},
    {"DataVerificacao", "data de verificação"},
    {"Descricao", "descrição"},
    {"Dia", "dia da semana"},
    {"EndCep", "CEP"},
    {"EndCompl", "complemento do endereço"},
    {"EndDescr", "descrição do endereço"},
    {"EndNro", "número do endereço"},
    {"HoraFim", "hora final"},
    {"HoraInicio", "hora inicial"},
    {"LocalInfr", "endereço na notificação"},
    {"Marca", "certificado ou declaração"},
    {"Modelo", "marca/modelo"},
    {"Nome", "nome"},
    {"NroIntImgCertif", "documento"},
    {"NroIntRejLimDif", "rejeição automática"},
    {"NroSensor", "número do sensor"},
    {"Numero", "número INMETRO"},
    {"PortDimel", "portaria DIMEL"},
    {"Senha", "senha"},
    {"SentidoVia", "sentido da via"},
    {"Setor", "setor"},
    {"SetorInc", "setor"},
    {"SubCodigo", "subcódigo"},
    {"TemImagemEntrelacada", "imagem entrelaçada"},
    {"TemLimiteDif", "limites diferenciados"},
    {"TemPerfilMag", "perfil magnético"},
    {"TipoAfer", "tipo da aferição"},
    {"TipoAgente", "tipo de medidor"},
    {"TipoEquip", "tipo de equipamento"},
    {"TipoVia", "tipo de via"},
    {"TrocaSenha", "troca de senha"},
    {"UF", "estado"},
    {"Usuario", "usuário"},
    {"VelocMin", "velocidade mínima"},
    {"VelocPerm", "velocidade permitida"},
    {"VelocPermitida", "velocidade permitida"},
    {"txtObsNotif", "observação da notificação"},
};

// Who changed it and when, and what the services make of the other members.
bool EhDoServico(const QString &membro)
{
    static const QStringList doServico = {"ClienteTrans", "OperadorTrans",  "DataTrans", "HoraTrans", "CodigoChave",
                                          "CodigoBusca",  "SubCodigoBusca", "TrabFoto",  "Versao"};
    return doServico.contains(membro);
}

} // namespace

std::string NomeDoCampo(std::string_view membro)
{
    const auto achado = Nomes.find(membro);
    return std::string(achado == Nomes.end() ? membro : achado->second);
}

std::vector<CampoDiferente> Diferencas(const QJsonObject &antes, const QJsonObject &depois)
{
    std::vector<CampoDiferente> diferentes;
    for (auto membro = depois.begin(); membro != depois.end(); ++membro) {
        if (!EhDoServico(membro.key()) && antes.value(membro.key()) != membro.value()) {
            diferentes.push_back({membro.key().toStdString(), antes.value(membro.key()), membro.value()});
        }
    }
    return diferentes;
}

std::vector<std::string> CamposDiferentes(const QJsonObject &antes, const QJsonObject &depois)
{
    std::vector<std::string> nomes;
    for (const CampoDiferente &campo : Diferencas(antes, depois)) {
        nomes.push_back(NomeDoCampo(campo.Membro));
    }
    return nomes;
}

} // namespace mesa
