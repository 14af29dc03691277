#include "services/Copia.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/AberturaSQLite.h"
#include "services/Calendario.h"
#include "services/Disco.h"
#include "services/ErroSql.h"
#include "services/LigacaoPostgres.h"
#include "services/TrabalhoDeCopia.h"
#include "services/Transporte.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <regex>
#include <utility>

namespace mesa {

namespace {

constexpr const char *ComecoDoNome = "registro.";

// The moment in a name that Copia gave.
std::optional<CopiaGuardada> CopiaDoNome(const std::filesystem::path &arquivo)
{
    static const std::regex forma(R"(registro\.(\d{4})(\d{2})(\d{2})-(\d{2})(\d{2})(\d{2})(?:-(\d{1,6}))?\.db)");
    const std::string nome = arquivo.filename().string();
    std::smatch partes;
    if (!std::regex_match(nome, partes, forma)) {
        return std::nullopt;
    }
    const auto numero = [&](std::size_t qual) { return std::stoi(partes[qual].str()); };
    try {
        const Data quando = DataDe(numero(3), numero(2), numero(1), numero(4), numero(5), numero(6));
        return CopiaGuardada{arquivo.string(), quando, partes[7].matched ? numero(7) : 1};
    } catch (const Falha &) {
        return std::nullopt; // no day of the calendar
    }
}

// A registry as it stands where it is.
struct Origem {
    std::string Identificador;
    // Copies it into an empty file; what is wrong with it, as far as that shows.
    std::function<std::vector<std::string>(const std::filesystem::path &para, const ParteDoAndamento &andamento)> Copia;
};

// With what is in its log.
Origem AbreArquivo(const std::string &registro)
{
    if (!std::filesystem::is_regular_file(registro)) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado, "Servicos", "Não há registro em " + registro + ".");
    }
    const AberturaSQLite abertura(registro, DiscoDeRede);
    const auto arquivo = std::make_shared<ArquivoSQLite>(
        registro, abertura.SoConsulta().empty() ? ArquivoSQLite::Modo::Gravar : ArquivoSQLite::Modo::Parado);
    // Looked at before others may take its place: from now on it is kept open.
    return {LeFicha(*arquivo, "O arquivo " + registro).Identificador,
            [arquivo](const std::filesystem::path &para, const ParteDoAndamento &andamento) {
                CopiaPaginas(*arquivo, para, andamento);
                return std::vector<std::string>();
            }};
}

Origem AbreServidor(const std::string &registro)
{
    const auto ligacao = std::make_shared<LigacaoPostgres>(registro);
    return {Transporte::Identificador(*ligacao),
            [ligacao](const std::filesystem::path &para, const ParteDoAndamento &andamento) {
                return Transporte::Traz(*ligacao, para, andamento).Achados;
            }};
}

Origem AbreOrigem(const std::string &registro)
{
    return EhDeServidor(registro) ? AbreServidor(registro) : AbreArquivo(registro);
}

// Copies of the registry of that identifier, the newest first. Of those whose registry cannot be told there are none.
std::vector<CopiaGuardada> CopiasDo(const std::string &identificador, const std::filesystem::path &pasta)
{
    std::vector<CopiaGuardada> copias;
    std::error_code erro;
    if (identificador.empty() || !std::filesystem::is_directory(pasta, erro)) {
        return copias;
    }
    for (const auto &entrada : std::filesystem::directory_iterator(pasta)) {
        const auto copia = CopiaDoNome(entrada.path());
        if (!copia || !entrada.is_regular_file(erro) || entrada.is_symlink(erro)) {
            continue;
        }
        IgnoraErro([&] {
            ArquivoSQLite arquivo(entrada.path(), ArquivoSQLite::Modo::Parado);
            if (LeFicha(arquivo, "").Identificador == identificador) {
                copias.push_back(*copia);
            }
        });
    }
    std::sort(copias.begin(), copias.end(), [](const CopiaGuardada &a, const CopiaGuardada &b) {
        return std::pair(a.Quando.Valor, a.Numero) > std::pair(b.Quando.Valor, b.Numero);
    });
    return copias;
}

// What could not be removed, as a sentence; nothing when all could.
std::string Rodizio(const std::string &identificador, const std::filesystem::path &pasta, int quantas,
                    const std::filesystem::path &nova)
try {
    std::string frase;
    const std::vector<CopiaGuardada> copias = CopiasDo(identificador, pasta);
    for (std::size_t qual = static_cast<std::size_t>(std::max(quantas, 1)); qual < copias.size(); ++qual) {
        std::error_code erro;
        // Also the one just made may be among the old ones, by a clock that was wrong then or is now.
        if (copias[qual].Arquivo != nova && !std::filesystem::remove(copias[qual].Arquivo, erro)) {
            frase += " A cópia antiga " + copias[qual].Arquivo + " não pôde ser apagada.";
        }
    }
    return frase;
} catch (const std::exception &) {
    return " As cópias antigas de " + pasta.string() + " não puderam ser olhadas.";
}

std::string FraseDoErro(const ErroSql &erro, const std::string &pasta)
{
    switch (erro.Motivo) {
    case MotivoSql::DiscoCheio:
        return "O disco da pasta " + pasta +
               " ficou cheio. A cópia não foi feita e nada ficou pela metade: libere espaço ou escolha outra pasta.";
    case MotivoSql::NaoGravou:
        return "O disco da pasta " + pasta + " não aceitou a gravação (" + erro.Detalhe +
               "). A cópia não foi feita e nada ficou pela metade: confira o espaço e o disco, ou escolha outra pasta.";
    default:
        return "A cópia não foi feita. " + erro.Descricao;
    }
}

} // namespace

Copia::Copia(std::string registro, ConfereArquivo confere)
    : m_Registro(std::move(registro)),
      m_Confere(std::move(confere))
{
}

std::string Copia::PastaPadrao(const std::string &registro)
{
    if (EhDeServidor(registro)) {
        throw Falha(
            NumeroFalha::CaminhoNaoEncontrado, "Servicos",
            "Diga em que pasta ficam as cópias: um registro em um banco de dados de servidor não tem nenhuma ao "
            "lado.");
    }
    return (LugarVerdadeiro(registro).parent_path() / "copias").string();
}

DesfechoDaCopia Copia::Faz(const std::string &pasta, const Instante &agora, int quantas,
                           const AndamentoDaCopia &andamento) const
{
    DesfechoDaCopia desfecho;
    try {
        Origem origem = AbreOrigem(m_Registro);
        const std::filesystem::path lugar = std::filesystem::absolute(pasta).lexically_normal();
        if (!std::filesystem::exists(lugar)) {
            FazPastaPrivada(lugar);
        }
        ArquivoEmPreparo preparo(lugar / (std::string(ComecoDoNome) + "em-copia.db"),
                                 "Outra cópia está sendo feita na pasta " + pasta + ". Espere que ela termine.");
        desfecho.Achados = origem.Copia(preparo.Caminho(), ParteDoAndamento(andamento, 0, 0.6));
        if (desfecho.Achados.empty()) {
            ArquivoSQLite copia(preparo.Caminho(), ArquivoSQLite::Modo::Parado);
            if (LeFicha(copia, "A cópia").Identificador != origem.Identificador) {
                throw Falha(NumeroFalha::ErroInterno, "Servicos", "A cópia não saiu igual ao registro.");
            }
            desfecho.Achados = mesa::Achados(preparo.Caminho(), m_Confere, ParteDoAndamento(andamento, 0.6, 1));
        }
        if (!desfecho.Achados.empty()) {
            desfecho.Frase = "A cópia não foi guardada: a conferência encontrou defeitos no registro.";
            return desfecho;
        }
        const std::filesystem::path nova = NomeLivre(lugar, ComecoDoNome, agora.Local);
        preparo.TomaOLugar(nova);
        desfecho.Feita = true;
        desfecho.Arquivo = nova.string();
        desfecho.Frase = "A cópia foi feita e conferida: " + nova.string() + " (" + TamanhoEmMB(nova) + ").";
        desfecho.Frase += Rodizio(origem.Identificador, lugar, quantas, nova);
    } catch (const Desistencia &) {
        desfecho.Cancelada = true;
        desfecho.Frase = "A cópia foi cancelada. Nada ficou pela metade.";
    } catch (const ErroSql &erro) {
        desfecho.Frase = FraseDoErro(erro, pasta);
    } catch (...) {
        desfecho.Frase = "A cópia não foi feita. " + FalhaCorrente().Descricao;
    }
    return desfecho;
}

bool Copia::Devida(const std::string &pasta, const Instante &agora) const
{
    const std::int32_t hoje = DiaCivil(agora.Local);
    for (const CopiaGuardada &copia : Guardadas(pasta)) {
        if (DiaCivil(copia.Quando) == hoje) {
            return false;
        }
    }
    return true;
}

std::vector<CopiaGuardada> Copia::Guardadas(const std::string &pasta) const
try {
    return CopiasDo(AbreOrigem(m_Registro).Identificador, pasta);
} catch (...) {
    PassaErro(" < Copia.Guardadas");
}

} // namespace mesa
