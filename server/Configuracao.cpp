#include "server/Configuracao.h"

#include "server/Certificado.h"
#include "server/Enderecos.h"
#include "services/Disco.h"

#include <toml++/toml.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string_view>
#include <type_traits>
#include <variant>

namespace servidor {

namespace {

constexpr std::int64_t Megabyte = 1 << 20;

// A number of the file: from, to, and what one of it is in the member's own unit.
template <class T> struct Numero {
    T Configuracao::*Onde;
    std::int64_t De;
    std::int64_t Ate;
    std::int64_t Unidade = 1;
};

struct ChaveDoArquivo {
    std::string_view Nome;
    std::variant<std::string Configuracao::*, bool Configuracao::*, Numero<std::size_t>, Numero<std::chrono::seconds>,
                 Numero<std::chrono::minutes>>
        Onde;
};

const std::vector<ChaveDoArquivo> &Tabela()
{
    using C = Configuracao;
    using Quantos = Numero<std::size_t>;
    using Segundos = Numero<std::chrono::seconds>;
    static const std::vector<ChaveDoArquivo> tabela = {
        {"registro", &C::Registro},
        {"escuta", &C::Escuta},
        {"pasta_do_certificado", &C::PastaDoCertificado},
        {"certificado", &C::Certificado},
        {"chave", &C::Chave},
        {"sem_tls", &C::SemTls},
        {"conexoes", Quantos{&C::Conexoes, 1, 64}},
        {"esperando", Quantos{&C::Esperando, 1, 10000}},
        {"por_sessao", Quantos{&C::PorSessao, 1, 100}},
        {"sessoes_por_usuario", Quantos{&C::SessoesPorUsuario, 1, 1000}},
        {"maior_pedido_mb", Quantos{&C::MaiorPedido, 2, 64, Megabyte}},
        {"prazo_da_operacao_s", Segundos{&C::PrazoDaOperacao, 1, 3600}},
        {"prazo_da_gravacao_s", Segundos{&C::PrazoDaGravacao, 1, 600}},
        {"ociosidade_min", Numero<std::chrono::minutes>{&C::Ociosidade, 1, 24 * 60}},
        {"prazo_do_fim_s", Segundos{&C::PrazoDoFim, 0, 600}},
        {"exige_motivo", &C::ExigeMotivo},
        {"numeros", &C::Numeros},
        {"diario", &C::Diario},
    };
    return tabela;
}

std::string NaLinha(const toml::source_region &onde)
{
    return "linha " + std::to_string(onde.begin.line) + ": ";
}

// Why the file cannot be read; empty when it can.
std::string PorqueNaoLe(const std::string &caminho)
{
    std::error_code erro;
    if (std::filesystem::is_directory(caminho, erro)) {
        return "é uma pasta";
    }
    return ::access(caminho.c_str(), R_OK) == 0 ? "" : mesa::MotivoDoSistema(errno);
}

// Why the file cannot be written to, or made; empty when it can.
std::string PorqueNaoEscreve(const std::string &caminho)
{
    std::error_code erro;
    if (std::filesystem::is_directory(caminho, erro)) {
        return "é uma pasta";
    }
    if (::access(caminho.c_str(), W_OK) == 0) {
        return "";
    }
    if (errno != ENOENT) {
        return mesa::MotivoDoSistema(errno);
    }
    const std::filesystem::path pasta = std::filesystem::absolute(caminho, erro).parent_path();
    if (::access(pasta.c_str(), W_OK | X_OK) == 0) {
        return "";
    }
    return "a pasta " + pasta.string() + ": " + mesa::MotivoDoSistema(errno);
}

// Whether the text of a connection has a password: "//user:password@", or as a parameter.
bool TemSenha(const std::string &registro)
{
    const std::size_t de = registro.find("://");
    if (de == std::string::npos) {
        return false;
    }
    const std::string quem = registro.substr(de + 3, registro.find_first_of("/?", de + 3) - de - 3);
    const std::size_t arroba = quem.find('@');
    return (arroba != std::string::npos && quem.find(':') < arroba) || registro.find("password=") != std::string::npos;
}

// Whether everybody on this machine may read the file.
bool LidoPorTodos(const std::string &caminho)
{
    std::error_code erro;
    return (std::filesystem::status(caminho, erro).permissions() & std::filesystem::perms::others_read) !=
           std::filesystem::perms::none;
}

// Whether one of them could not listen because of the other.
bool MesmaPorta(const std::string &um, const std::string &outro)
{
    const auto deUm = LugarDeEscuta::Le(um);
    const auto deOutro = LugarDeEscuta::Le(outro);
    const auto emTodos = [](const LugarDeEscuta &lugar) { return lugar.Maquina == "0.0.0.0" || lugar.Maquina == "::"; };
    return deUm && deOutro && deUm->Porta != 0 && deUm->Porta == deOutro->Porta &&
           (deUm->Maquina == deOutro->Maquina || emTodos(*deUm) || emTodos(*deOutro));
}

// Why the value is not one for the key; empty when it was taken.
template <class T> std::string Poe(Configuracao &lida, const Numero<T> &numero, const toml::node &no)
{
    const auto valor = no.value_exact<std::int64_t>();
    if (!valor || *valor < numero.De || *valor > numero.Ate) {
        return "é um número inteiro de " + std::to_string(numero.De) + " a " + std::to_string(numero.Ate);
    }
    if constexpr (std::is_same_v<T, std::size_t>) {
        lida.*numero.Onde = static_cast<std::size_t>(*valor * numero.Unidade);
    } else {
        lida.*numero.Onde = T(*valor * numero.Unidade);
    }
    return "";
}

std::string Poe(Configuracao &lida, bool Configuracao::*onde, const toml::node &no)
{
    const auto valor = no.value_exact<bool>();
    if (!valor) {
        return "é true (sim) ou false (não), sem aspas";
    }
    lida.*onde = *valor;
    return "";
}

std::string Poe(Configuracao &lida, std::string Configuracao::*onde, const toml::node &no)
{
    const auto valor = no.value_exact<std::string>();
    if (!valor || valor->find('\0') != std::string::npos) {
        return "é um texto, entre aspas";
    }
    lida.*onde = *valor;
    return "";
}

} // namespace

std::vector<std::string> Configuracao::Chaves()
{
    std::vector<std::string> nomes;
    for (const ChaveDoArquivo &chave : Tabela()) {
        nomes.emplace_back(chave.Nome);
    }
    return nomes;
}

Configuracao Configuracao::Le(const std::string &arquivo, std::vector<std::string> &erros)
{
    erros.clear();
    Configuracao lida;
    std::ifstream aberto(arquivo, std::ios::binary);
    if (const std::string porque = PorqueNaoLe(arquivo); !porque.empty()) {
        erros.push_back("O arquivo de configuração " + arquivo + " não pôde ser lido: " + porque + ".");
        return lida;
    }
    std::stringstream tudo;
    tudo << aberto.rdbuf();
    toml::table tabela;
    try {
        tabela = toml::parse(tudo.str(), arquivo);
    } catch (const toml::parse_error &erro) {
        // What the line has may be a password, and the library's words are English.
        erros.push_back(arquivo + ", linha " + std::to_string(erro.source().begin.line) + ", coluna " +
                        std::to_string(erro.source().begin.column) +
                        ": isto não está escrito como deve. Cada linha é \"chave = valor\"; textos vão entre aspas, e "
                        "uma chave vem uma vez só.");
        return lida;
    }
    for (const auto &[nome, no] : tabela) {
        const auto chave = std::ranges::find(Tabela(), nome.str(), &ChaveDoArquivo::Nome);
        const std::string onde = arquivo + ", " + NaLinha(nome.source());
        if (chave == Tabela().end()) {
            erros.push_back(onde + "não há configuração com o nome \"" + std::string(nome.str()) + "\".");
            continue;
        }
        const std::string recusa =
            std::visit([&no = no, &lida](const auto &lugar) { return Poe(lida, lugar, no); }, chave->Onde);
        if (!recusa.empty()) {
            erros.push_back(onde + "\"" + std::string(nome.str()) + "\" " + recusa + ".");
        }
    }
    if (!tabela.contains("registro")) {
        erros.push_back(arquivo + ": falta \"registro\", que diz onde o registro está.");
    }
    if (TemSenha(lida.Registro) && LidoPorTodos(arquivo)) {
        erros.push_back(arquivo +
                        ": \"registro\" tem uma senha, e todos nesta máquina podem ler o arquivo. Dê-lhe o modo "
                        "0640 e o grupo do servidor, ou guarde a senha em .pgpass.");
    }
    std::ranges::sort(erros);
    return lida;
}

bool Configuracao::NoBanco() const
{
    return Registro.starts_with("postgresql://");
}

bool Configuracao::SoNestaMaquina() const
{
    const auto onde = LugarDeEscuta::Le(Escuta);
    return onde && onde->SoNestaMaquina();
}

std::vector<std::string> Configuracao::Confere() const
{
    std::vector<std::string> erros;
    if (Registro.empty()) {
        erros.emplace_back("\"registro\" não diz onde o registro está.");
    } else if (!NoBanco()) {
        if (Registro.find("://") != std::string::npos) {
            erros.emplace_back("\"registro\" não é o caminho de um arquivo nem começa com \"postgresql://\".");
        } else {
            if (const std::string porque = PorqueNaoLe(Registro); !porque.empty()) {
                erros.push_back("O arquivo " + Registro + ", que \"registro\" nomeia, não pôde ser lido: " + porque +
                                ".");
            }
        }
    }
    for (const auto &[limite, chave] :
         {std::pair("limite_comando", "prazo_da_operacao_s"), std::pair("limite_trava", "prazo_da_operacao_s"),
          std::pair("limite_confirmacao", "prazo_da_gravacao_s")}) {
        if (NoBanco() && Registro.find(limite + std::string("=")) != std::string::npos) {
            erros.push_back("\"registro\" tem \"" + std::string(limite) + "\", que tomaria o lugar de \"" + chave +
                            "\": tire-o do texto de conexão.");
        }
    }
    if (!LugarDeEscuta::Le(Escuta)) {
        erros.push_back("\"escuta\" é \"" + Escuta +
                        "\": precisa ser o número de uma máquina e uma porta, como \"0.0.0.0:50443\" ou "
                        "\"[::]:50443\".");
    } else if (SemTls && !SoNestaMaquina()) {
        erros.push_back("\"sem_tls\" só vale na própria máquina: com ele, \"escuta\" começa com \"127.0.0.1:\" ou "
                        "\"[::1]:\".");
    }
    // They are told to whoever asks.
    if (const auto onde = LugarDeEscuta::Le(Numeros); !Numeros.empty() && (!onde || !onde->SoNestaMaquina())) {
        erros.push_back("\"numeros\" é \"" + Numeros +
                        "\": precisa ser um número da própria máquina e uma porta, como \"127.0.0.1:9464\", ou vazio.");
    } else if (MesmaPorta(Numeros, Escuta)) {
        erros.emplace_back("\"numeros\" e \"escuta\" têm a mesma porta: cada um precisa da sua.");
    }
    if (NoBanco() && PrazoDaGravacao >= PrazoDaOperacao) {
        erros.emplace_back(
            "\"prazo_da_gravacao_s\" precisa ser menor que \"prazo_da_operacao_s\": depois de esperar por "
            "uma gravação, o servidor ainda descobre se ela foi feita.");
    }
    if (SemTls && !(Certificado.empty() && Chave.empty())) {
        erros.emplace_back(
            "\"certificado\" e \"chave\" não valem com \"sem_tls\": deixe-os vazios, ou atenda com TLS.");
    } else if (Certificado.empty() != Chave.empty()) {
        erros.emplace_back("\"certificado\" e \"chave\" vão juntos: os dois arquivos, ou nenhum.");
    } else if (!Certificado.empty()) {
        if (const std::string recusa = ParDeChaves::RecusaDosArquivos(Certificado, Chave); !recusa.empty()) {
            erros.push_back(recusa);
        }
    }
    if (!SemTls && Certificado.empty()) {
        std::error_code erro;
        if (!std::filesystem::is_directory(PastaDoCertificado, erro)) {
            erros.push_back("A pasta \"" + PastaDoCertificado +
                            "\", que \"pasta_do_certificado\" nomeia, não existe ou não pode ser vista.");
        }
    }
    if (Diario.empty()) {
        erros.emplace_back("\"diario\" é o caminho de um arquivo, ou \"-\" para a saída do programa.");
    } else if (Diario != "-") {
        if (const std::string porque = PorqueNaoEscreve(Diario); !porque.empty()) {
            erros.push_back("Em \"" + Diario + "\", que \"diario\" nomeia, não se pode escrever: " + porque + ".");
        }
    }
    return erros;
}

} // namespace servidor
