#include "desk/host/Inicio.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Conferidor.h"
#include "services/Disco.h"
#include "services/Recusa.h"
#include "services/Referencias.h"
#include "services/RegrasDeSenha.h"

#include <QFile>
#include <QLockFile>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace mesa {

namespace {

// What the embedded database may keep beside its file.
constexpr std::array<const char *, 3> Partes = {"", "-wal", "-shm"};

void Move(const std::filesystem::path &de, const std::filesystem::path &para)
{
    for (const char *parte : Partes) {
        const std::filesystem::path origem = de.string() + parte;
        if (std::filesystem::exists(origem)) {
            std::filesystem::rename(origem, para.string() + parte);
        }
    }
}

// Name for a registry that is kept beside, taken by none yet: the moment, and a number from the second on.
std::filesystem::path LugarAoLado(const std::filesystem::path &diretorio, Data momento)
{
    const std::string nome = "registro." + Format(momento, "yyyymmdd-hhnnss");
    std::filesystem::path lugar = diretorio / (nome + ".db");
    for (int numero = 2; std::filesystem::exists(lugar); ++numero) {
        lugar = diretorio / (nome + "-" + std::to_string(numero) + ".db");
    }
    return lugar;
}

void Apaga(const std::filesystem::path &arquivo)
{
    for (const char *parte : Partes) {
        std::filesystem::remove(arquivo.string() + parte);
    }
}

// Whether something stands there, whatever it is: a link that leads nowhere too.
bool HaAlgo(const std::filesystem::path &caminho)
{
    std::error_code erro;
    return std::filesystem::symlink_status(caminho, erro).type() != std::filesystem::file_type::not_found;
}

// Why a file could not be opened, with its name.
std::string FraseSobre(const std::filesystem::path &arquivo)
{
    const std::string frase = FalhaCorrente().Descricao;
    return frase.find(arquivo.string()) == std::string::npos ? "Em " + arquivo.string() + ": " + frase : frase;
}

Falha NaoSeCria(const std::string &frase)
{
    return Falha(NumeroFalha::ChaveJaExiste, "Inicio", frase);
}

} // namespace

std::filesystem::path DiretorioDaAmostra(const std::filesystem::path &diretorio)
{
    return diretorio / "amostra";
}

std::optional<ProblemaDoRegistroNovo> ConfereRegistroNovo(const RegistroNovo &novo)
{
    using Campo = CampoDoRegistroNovo;
    constexpr std::int32_t maiorCodigo = 999999;
    if (novo.Cliente.CodCliente < 1 || novo.Cliente.CodCliente > maiorCodigo) {
        return ProblemaDoRegistroNovo{Campo::CodCliente, "Informe o código do cliente, um número de 1 a 999999."};
    }
    if (Trim(novo.Cliente.Nome).empty()) {
        return ProblemaDoRegistroNovo{Campo::Cliente, "Informe o nome do cliente."};
    }
    if (!Referencias::Tabelas().TemEstado(novo.Cliente.UF)) {
        return ProblemaDoRegistroNovo{Campo::Estado, "Informe o estado do cliente, com as duas letras da sua sigla."};
    }
    if (Trim(novo.Usuario).empty()) {
        return ProblemaDoRegistroNovo{Campo::Usuario, "Informe o usuário com que o administrador entra."};
    }
    if (Trim(novo.Nome).empty()) {
        return ProblemaDoRegistroNovo{Campo::Nome, "Informe o nome do administrador."};
    }
    try {
        RegrasDeSenha::Confere(novo.Senha, Trim(novo.Usuario), Trim(novo.Nome));
    } catch (const Recusa &motivo) {
        return ProblemaDoRegistroNovo{Campo::Senha, motivo.what()};
    }
    return std::nullopt;
}

Inicio::Inicio(std::filesystem::path diretorio, Preferencias &preferencias, Relogio agora,
               std::function<void(Servicos &, const Progresso &)> preenche, Restaurador restaura, ConectaServidor rede)
    : m_Diretorio(std::move(diretorio)),
      m_Preferencias(preferencias),
      m_Agora(std::move(agora)),
      m_Preenche(std::move(preenche)),
      m_Restaura(std::move(restaura)),
      m_Rede(std::move(rede))
{
}

Ref<Servicos> Inicio::Abre(IPessoaNoInicio &pessoa)
{
    if (const auto servidor = m_Preferencias.Servidor(m_Diretorio)) {
        return AbreServidor({servidor, "", ""}, pessoa);
    }
    return AbreAqui(pessoa);
}

Ref<Servicos> Inicio::AbreAqui(IPessoaNoInicio &pessoa)
{
    const auto conhecido = Conhecido();
    return conhecido ? Retoma(*conhecido, pessoa) : Comeca(pessoa);
}

Ref<Servicos> Inicio::AbreLugar(const LugarDoTrabalho &lugar, IPessoaNoInicio &pessoa)
{
    return lugar.Servidor ? AbreServidor(lugar, pessoa) : AbreAqui(pessoa);
}

Ref<Servicos> Inicio::AbreServidor(LugarDoTrabalho lugar, IPessoaNoInicio &pessoa)
{
    for (;;) {
        std::string frase;
        if (const Ref<Servicos> aberto = Conecta(lugar, pessoa, frase)) {
            return aberto;
        }
        switch (pessoa.FaltaServidor(frase)) {
        case OpcaoSemServidor::TentarDeNovo:
            break;
        case OpcaoSemServidor::MudarDeLugar:
            if (const auto outro = pessoa.EscolheLugar(lugar)) {
                if (!outro->Servidor) {
                    return AbreAqui(pessoa);
                }
                lugar = *outro;
            }
            break;
        case OpcaoSemServidor::Sair:
            return nullptr;
        }
    }
}

Ref<Servicos> Inicio::Conecta(const LugarDoTrabalho &lugar, IPessoaNoInicio &pessoa, std::string &frase)
{
    const rede::Endereco &servidor = *lugar.Servidor;
    const rede::Encontrado encontrado = rede::Encontra(
        servidor, {lugar.Digital, lugar.Autoridade}, m_Preferencias, m_Rede,
        {[&](const std::string &qual, const std::string &digital) { return pessoa.ConfiaNoServidor(qual, digital); },
         [&](const std::string &pergunta) { return pessoa.Aceita(pergunta); }, "em Mudar de registro"});
    frase = encontrado.Frase;
    if (!encontrado.Servicos) {
        return nullptr;
    }
    try {
        m_Preferencias.LembraServidor(m_Diretorio, servidor);
    } catch (...) {
        frase = FalhaCorrente().Descricao;
        return nullptr;
    }
    m_Lugar = {servidor, encontrado.Confiado.Digital, encontrado.Confiado.Autoridade};
    m_Identificador = encontrado.Identificador;
    return encontrado.Servicos;
}

Ref<Servicos> Inicio::AbreArquivo(const std::filesystem::path &arquivo, IPessoaNoInicio &pessoa)
{
    const auto conhecido = Conhecido();
    std::error_code naoHa;
    const auto servidor = m_Preferencias.Servidor(m_Diretorio);
    if (!servidor && conhecido && std::filesystem::equivalent(conhecido->Caminho, arquivo, naoHa)) {
        return Retoma(*conhecido, pessoa);
    }
    const std::string deHoje = servidor    ? "do servidor " + servidor->Texto()
                               : conhecido ? "que está em " + conhecido->Caminho.string()
                                           : "";
    // Asked before it is opened: a registry of an earlier version is changed by that.
    if (deHoje.empty() ||
        pessoa.Aceita("Aqui se trabalha no registro " + deHoje + ". Abrir o que está em " + arquivo.string() +
                      " e trabalhar nele de agora em diante? Para trazer uma cópia de volta, responda "
                      "não e use Restaurar, no menu Registro.")) {
        if (const auto aberto = AbreEscolhido(arquivo, pessoa)) {
            return aberto;
        }
    }
    return Abre(pessoa);
}

std::optional<RegistroConhecido> Inicio::Conhecido() const
{
    if (auto conhecido = m_Preferencias.Registro(m_Diretorio)) {
        return conhecido;
    }
    if (HaAlgo(CaminhoDoRegistro(m_Diretorio)) &&
        !TemAmostra()) { // of another machine, or of before there were settings
        return RegistroConhecido{CaminhoDoRegistro(m_Diretorio), ""};
    }
    return std::nullopt;
}

Ref<Servicos> Inicio::Comeca(IPessoaNoInicio &pessoa)
{
    for (;;) {
        Ref<Servicos> aberto;
        switch (pessoa.Comeca()) {
        case OpcaoDoInicio::Novo:
            pessoa.PedeRegistroNovo([&](const RegistroNovo &novo) -> std::optional<ProblemaDoRegistroNovo> {
                if (auto problema = ConfereRegistroNovo(novo)) {
                    return problema;
                }
                try {
                    aberto = Cria(novo);
                    return std::nullopt;
                } catch (...) {
                    return ProblemaDoRegistroNovo{CampoDoRegistroNovo::CodCliente, FalhaCorrente().Descricao};
                }
            });
            break;
        case OpcaoDoInicio::Existente:
            if (const auto escolhido = pessoa.EscolheRegistro()) {
                aberto = AbreEscolhido(*escolhido, pessoa);
            }
            break;
        case OpcaoDoInicio::Servidor:
            if (const auto lugar = pessoa.EscolheLugar({rede::Endereco{}, "", ""}); lugar && lugar->Servidor) {
                std::string frase;
                aberto = Conecta(*lugar, pessoa, frase);
                if (!aberto) {
                    pessoa.Avisa(frase);
                }
            }
            break;
        case OpcaoDoInicio::Amostra:
            aberto = AbreAmostra(pessoa);
            break;
        case OpcaoDoInicio::Sair:
            return nullptr;
        }
        if (aberto) {
            return aberto;
        }
    }
}

Ref<Servicos> Inicio::AbreEscolhido(const std::filesystem::path &escolhido, IPessoaNoInicio &pessoa)
{
    try {
        const Ref<Servicos> aberto = Servicos::Abre(escolhido.string(), m_Agora);
        Lembra(escolhido, *aberto);
        return aberto;
    } catch (...) {
        pessoa.Avisa(FraseSobre(escolhido));
        return nullptr;
    }
}

Ref<Servicos> Inicio::AbreAmostra(IPessoaNoInicio &pessoa)
{
    const std::filesystem::path diretorio = LugarDaAmostra();
    const std::filesystem::path registro = CaminhoDoRegistro(diretorio);
    try {
        if (!HaAlgo(registro)) {
            return CriaAmostra([&](double parte) { pessoa.Progresso(parte); });
        }
        const Ref<Servicos> aberta = Servicos::Abre(registro.string(), m_Agora);
        m_Diretorio = diretorio;
        Lembra(registro, *aberta);
        return aberta;
    } catch (...) {
        pessoa.Avisa(FalhaCorrente().Descricao);
        return nullptr;
    }
}

bool Inicio::TemAmostra() const
{
    try {
        return Servicos::Abre(CaminhoDoRegistro(m_Diretorio).string(), m_Agora)->Tipo() == TipoDeRegistro::Amostra;
    } catch (...) {
        return false;
    }
}

std::filesystem::path Inicio::LugarDaAmostra() const
{
    return TemAmostra() ? m_Diretorio : DiretorioDaAmostra(m_Diretorio);
}

void Inicio::Lembra(const std::filesystem::path &caminho, Servicos &aberto)
{
    m_Lugar = {};
    m_Registro = caminho;
    m_Identificador = aberto.Identificador();
    if (aberto.Tipo() != TipoDeRegistro::Amostra) {
        m_Preferencias.LembraRegistro(m_Diretorio, {caminho, aberto.Identificador()});
        m_Preferencias.LembraServidor(m_Diretorio, std::nullopt);
    }
}

Ref<Servicos> Inicio::Retoma(const RegistroConhecido &conhecido, IPessoaNoInicio &pessoa)
{
    std::filesystem::path caminho = conhecido.Caminho;
    for (;;) {
        std::string frase;
        try {
            const Ref<Servicos> aberto = Servicos::Abre(caminho.string(), m_Agora);
            if (conhecido.Identificador.empty() || aberto->Identificador() == conhecido.Identificador) {
                Lembra(caminho, *aberto);
                return aberto;
            }
            frase =
                "O registro que está em " + caminho.string() + " não é aquele em que se trabalhava aqui: é " +
                (aberto->Tipo() == TipoDeRegistro::Amostra ? "uma amostra, de identificador " : "o de identificador ") +
                aberto->Identificador() + ", e o de antes era o de identificador " + conhecido.Identificador + ".";
            if (pessoa.Aceita(frase + " Trabalhar neste registro de agora em diante?")) {
                Lembra(caminho, *aberto);
                return aberto;
            }
        } catch (...) {
            frase = FraseSobre(caminho);
        }
        switch (pessoa.Falta(frase)) {
        case OpcaoDaFalta::TentarDeNovo:
            break;
        case OpcaoDaFalta::EscolherArquivo:
            caminho = pessoa.EscolheRegistro().value_or(caminho);
            break;
        case OpcaoDaFalta::RestaurarCopia:
            if (const auto copia = pessoa.EscolheCopia()) {
                Restaura(conhecido, *copia, pessoa);
                caminho = conhecido.Caminho;
            }
            break;
        case OpcaoDaFalta::MudarDeLugar:
            if (const auto lugar = pessoa.EscolheLugar({rede::Endereco{}, "", ""}); lugar && lugar->Servidor) {
                return AbreServidor(*lugar, pessoa);
            }
            break;
        case OpcaoDaFalta::Sair:
            return nullptr;
        }
    }
}

std::filesystem::path Inicio::Diretorio() const
{
    return m_Lugar.Servidor ? m_Diretorio / "servidores" / m_Identificador : m_Diretorio;
}

bool Inicio::Confere(IPessoaNoInicio &pessoa) const
{
    if (m_Lugar.Servidor) {
        return true;
    }
    const ResultadoDaConferencia resultado = Conferidor(m_Registro.string()).ConfereRapido();
    return resultado.Como == ResultadoDaConferencia::Desfecho::Inteira ||
           pessoa.Continua(resultado.Frase, resultado.Achados);
}

void Inicio::Restaura(const std::filesystem::path &copia, IPessoaNoInicio &pessoa)
{
    Restaura({m_Registro, m_Identificador}, copia, pessoa);
}

void Inicio::Restaura(const RegistroConhecido &registro, const std::filesystem::path &copia, IPessoaNoInicio &pessoa)
{
    PedidoDeRestauracao pedido{copia.string(), registro.Identificador};
    const DesfechoDaCopia desfecho = m_Restaura(registro.Caminho, pedido);
    if (desfecho.SoPorSerDeOutro && pessoa.Aceita(desfecho.Frase + " Restaurar mesmo assim?")) {
        pedido.DeOutro = true;
        m_Restaura(registro.Caminho, pedido);
    }
}

Ref<Servicos> Inicio::Faz(const std::filesystem::path &diretorio, TipoDeRegistro tipo,
                          const std::function<void(Servicos &)> &comeca)
{
    FazPastaPrivada(diretorio);
    const std::filesystem::path registro = CaminhoDoRegistro(diretorio);
    const std::filesystem::path emPreparo = diretorio / "registro.em-preparo.db";
    QLockFile tranca(QFile::decodeName((diretorio / "registro.em-preparo.tranca").c_str()));
    tranca.setStaleLockTime(0); // of a program that is gone it is free at once, of one at work never
    if (!tranca.tryLock(0)) {
        throw NaoSeCria("Outro programa está criando um registro em " + diretorio.string() +
                        ". Espere que ele termine.");
    }
    if (HaAlgo(registro)) {
        throw NaoSeCria("Já há um registro em " + registro.string() + ".");
    }
    Apaga(emPreparo);
    comeca(*Servicos::Cria(emPreparo.string(), tipo, m_Agora));
    Move(emPreparo, registro);
    return Servicos::Abre(registro.string(), m_Agora);
}

Ref<Servicos> Inicio::Cria(const RegistroNovo &novo)
{
    if (const auto problema = ConfereRegistroNovo(novo)) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "Inicio", problema->Frase);
    }
    if (const auto conhecido = m_Preferencias.Registro(m_Diretorio)) {
        throw NaoSeCria("O diretório " + m_Diretorio.string() + " já tem um registro, que fica em " +
                        conhecido->Caminho.string() + (HaAlgo(conhecido->Caminho) ? "." : " e não está lá agora.") +
                        " Nada é criado no lugar dele.");
    }
    if (TemAmostra()) {
        Move(CaminhoDoRegistro(m_Diretorio), LugarAoLado(m_Diretorio, m_Agora().Local));
    }
    const Ref<Servicos> feito = Faz(m_Diretorio, TipoDeRegistro::Registro, [&](Servicos &servicos) {
        Operador administrador;
        administrador.Usuario = novo.Usuario;
        administrador.Nome = novo.Nome;
        std::string recusa;
        if (!servicos.PrimeiroAdministrador(novo.Cliente, administrador, novo.Senha, recusa)) {
            throw Falha(NumeroFalha::ArgumentoInvalido, "Inicio", recusa);
        }
    });
    Lembra(CaminhoDoRegistro(m_Diretorio), *feito);
    return feito;
}

Ref<Servicos> Inicio::CriaAmostra(const Progresso &progresso)
{
    const std::filesystem::path diretorio = DiretorioDaAmostra(m_Diretorio);
    const std::filesystem::path registro = CaminhoDoRegistro(diretorio);
    if (HaAlgo(registro)) {
        if (Servicos::Abre(registro.string(), m_Agora)->Tipo() != TipoDeRegistro::Amostra) {
            throw NaoSeCria("O registro que está em " + registro.string() + " não é uma amostra.");
        }
        Move(registro, LugarAoLado(diretorio, m_Agora().Local));
    }
    const Ref<Servicos> feita =
        Faz(diretorio, TipoDeRegistro::Amostra, [&](Servicos &servicos) { m_Preenche(servicos, progresso); });
    m_Diretorio = diretorio;
    Lembra(registro, *feita);
    return feita;
}

} // namespace mesa
