#include "services/Restauracao.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/AberturaSQLite.h"
#include "services/Banco.h"
#include "services/DialetoSQLite.h"
#include "services/Disco.h"
#include "services/LigacaoPostgres.h"
#include "services/TextoQt.h"
#include "services/Transporte.h"

#include <QTemporaryDir>

#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace mesa {

namespace {

namespace fs = std::filesystem;

// Refused because the copy is of another registry, or may be.
class DeOutroRegistro : public Falha {
  public:
    explicit DeOutroRegistro(const std::string &frase)
        : Falha(NumeroFalha::PermissaoNegada, "Servicos",
                frase + " Para restaurá-la mesmo assim, confirme que a cópia pode ser de outro registro.")
    {
    }
};

Falha Recusada(const std::string &frase)
{
    return Falha(NumeroFalha::ErroDeAcesso, "Servicos", frase);
}

Falha AbertoEmOutra()
{
    return Recusada("O registro está aberto em outra janela ou estação. Feche o programa em todas e tente de novo.");
}

// A file with a log beside it is half of a registry, and which half cannot be told.
void ExigeSozinha(const fs::path &copia)
{
    for (const char *parte : {"-wal", "-journal"}) {
        const fs::path ao_lado = copia.string() + parte;
        std::error_code erro;
        if (fs::file_size(ao_lado, erro) > 0 && !erro) {
            throw Recusada("Ao lado da cópia está o arquivo " + ao_lado.filename().string() +
                           ", com gravações que podem não estar nela. Uma cópia fica sozinha em um arquivo: abra esse "
                           "registro no programa e feche-o, ou escolha outra cópia.");
        }
    }
}

std::int64_t VersaoDaqui()
{
    return static_cast<std::int64_t>(DialetoSQLite().Migracoes().size()) + 1;
}

FichaDoRegistro FichaDaCopia(const fs::path &copia)
try {
    ArquivoSQLite arquivo(copia, ArquivoSQLite::Modo::Parado);
    FichaDoRegistro ficha = LeFicha(arquivo, "A cópia " + copia.string());
    const std::int64_t tamanho = arquivo.Inteiro("PRAGMA page_count") * arquivo.Inteiro("PRAGMA page_size");
    if (tamanho != static_cast<std::int64_t>(fs::file_size(copia))) {
        throw Recusada("A cópia " + copia.string() + " está cortada ou tem mais do que foi copiado: tem " +
                       std::to_string(fs::file_size(copia)) + " bytes, e devia ter " + std::to_string(tamanho) + ".");
    }
    const std::int64_t aqui = VersaoDaqui();
    if (ficha.Versao > aqui) {
        throw Recusada("A cópia é da versão " + std::to_string(ficha.Versao) +
                       ", mais nova que a deste programa (versão " + std::to_string(aqui) + "). Atualize o programa.");
    }
    return ficha;
} catch (const ErroSql &erro) {
    throw Recusada("A cópia " + copia.string() + " não pôde ser lida (" + erro.Detalhe + ").");
}

// Empty when the registry has none or cannot be read.
std::string IdentificadorDo(const fs::path &registro)
{
    std::string identificador;
    IgnoraErro([&] {
        const AberturaSQLite abertura(registro, DiscoDeRede);
        ArquivoSQLite arquivo(registro, abertura.SoConsulta().empty() ? ArquivoSQLite::Modo::Gravar
                                                                      : ArquivoSQLite::Modo::Parado);
        identificador = LeFicha(arquivo, "").Identificador;
    });
    return identificador;
}

// registro: its file; none where there cannot be one yet.
void ExigeDoMesmo(const FichaDoRegistro &ficha, const PedidoDeRestauracao &pedido, const fs::path &registro)
{
    const bool existe = !registro.empty() && fs::exists(registro);
    if (pedido.DeOutro || (pedido.Identificador.empty() && !existe)) {
        return;
    }
    const std::string esperado = pedido.Identificador.empty() ? IdentificadorDo(registro) : pedido.Identificador;
    if (esperado.empty()) {
        throw DeOutroRegistro("O registro em " + registro.string() +
                              " não diz quem é, e não se sabe se a cópia é dele.");
    }
    if (ficha.Identificador.empty()) {
        throw DeOutroRegistro("A cópia é de um programa antigo e não diz de que registro é.");
    }
    if (ficha.Identificador != esperado) {
        throw DeOutroRegistro("A cópia é de outro registro.");
    }
}

// To the newest schema, and alone in its file again.
void Atualiza(const fs::path &arquivo, const Instante &agora)
{
    {
        const Banco banco(std::make_unique<DialetoSQLite>(), arquivo.string(), agora);
    }
    ArquivoSQLite(arquivo, ArquivoSQLite::Modo::Gravar).Texto("PRAGMA journal_mode = DELETE");
}

// Brings what is in the registry's log into its file, which stands alone from then on; false when the database cannot
// make anything of it. Refuses while somebody has it open.
bool Junta(const fs::path &registro)
{
    try {
        SeparaDiarioAlheio(registro);
        ArquivoSQLite aberto(registro, ArquivoSQLite::Modo::Gravar);
        if (!aberto.SoMeu()) {
            throw AbertoEmOutra();
        }
        if (TemJornalAlheio(registro)) {
            return false;
        }
        const bool junto = aberto.Texto("PRAGMA journal_mode = DELETE") == "delete";
        aberto.Comanda("BEGIN EXCLUSIVE; COMMIT");
        return junto;
    } catch (const ErroSql &erro) {
        if (erro.Motivo == MotivoSql::Ocupado) {
            throw AbertoEmOutra();
        }
        if (erro.Motivo != MotivoSql::Danificado) {
            throw;
        }
        return false;
    }
}

// The registry under a further name. Where a file has one name only, a copy of it.
void Guarda(const fs::path &registro, const fs::path &guardado)
{
    std::error_code semNomes;
    fs::create_hard_link(registro, guardado, semNomes);
    if (semNomes) {
        const fs::path nome = registro.parent_path() / (registro.stem().string() + ".em-guarda.db");
        ArquivoEmPreparo copia(nome, "Outra restauração está sendo feita.");
        fs::copy_file(registro, copia.Caminho(), fs::copy_options::overwrite_existing);
        copia.TomaOLugar(guardado);
    }
}

// Keeps what stands in the registry's place, with what is beside it, and leaves nothing beside it. The place itself is
// not touched. The file that keeps it; none when there was nothing.
fs::path Afasta(const fs::path &registro, const Instante &agora)
{
    const fs::path guardado = NomeLivre(registro.parent_path(), ComecoDosGuardados(registro), agora.Local);
    const bool existe = fs::exists(registro);
    if (existe && Junta(registro)) {
        Guarda(registro, guardado);
    } else {
        if (existe) {
            Guarda(registro, guardado);
        }
        for (const char *parte : {"-wal", "-journal"}) {
            if (fs::exists(registro.string() + parte)) {
                fs::rename(registro.string() + parte, guardado.string() + parte);
            }
        }
    }
    fs::remove(registro.string() + "-shm");
    SincronizaPasta(registro.parent_path());
    return existe ? guardado : fs::path();
}

} // namespace

Restauracao::Restauracao(std::string registro, ConfereArquivo confere)
    : m_Registro(std::move(registro)),
      m_Confere(std::move(confere))
{
}

std::vector<std::string> Restauracao::Prepara(const fs::path &copia, const fs::path &arquivo,
                                              const FichaDoRegistro &ficha, const Instante &agora,
                                              const AndamentoDaCopia &andamento, double ate) const
{
    {
        ArquivoSQLite origem(copia, ArquivoSQLite::Modo::Parado);
        CopiaPaginas(origem, arquivo, ParteDoAndamento(andamento, 0, 0.4 * ate));
    }
    std::vector<std::string> achados = Achados(arquivo, {}, ParteDoAndamento(andamento, 0.4 * ate, 0.6 * ate));
    if (achados.empty()) {
        if (ficha.Versao < VersaoDaqui()) {
            Atualiza(arquivo, agora);
        }
        achados = Achados(arquivo, m_Confere, ParteDoAndamento(andamento, 0.6 * ate, ate));
    }
    return achados;
}

DesfechoDaCopia Restauracao::Faz(const PedidoDeRestauracao &pedido, const Instante &agora,
                                 const AndamentoDaCopia &andamento) const
{
    DesfechoDaCopia desfecho;
    const auto nada = [&](const std::string &frase) { desfecho.Frase = "Nada foi restaurado. " + frase; };
    try {
        const fs::path copia = LugarVerdadeiro(pedido.Arquivo);
        if (!fs::is_regular_file(copia)) {
            throw Recusada("Não há cópia em " + pedido.Arquivo + ".");
        }
        EhDeServidor(m_Registro) ? NoServidor(copia, pedido, agora, andamento, desfecho)
                                 : NoArquivo(copia, pedido, agora, andamento, desfecho);
        if (!desfecho.Achados.empty()) {
            nada("A conferência encontrou defeitos na cópia.");
        }
    } catch (const Desistencia &) {
        desfecho.Cancelada = true;
        desfecho.Frase = "A restauração foi cancelada. O registro ficou como estava.";
    } catch (const DeOutroRegistro &falha) {
        desfecho.SoPorSerDeOutro = true;
        nada(falha.Descricao);
    } catch (const SemCerteza &falha) {
        desfecho.Frase = falha.Descricao;
    } catch (const fs::filesystem_error &erro) {
        nada("Não foi possível mexer em " + erro.path1().string() + ": " + MotivoDoSistema(erro.code().value()) + ".");
    } catch (...) {
        nada(FalhaCorrente().Descricao);
    }
    return desfecho;
}

void Restauracao::NoServidor(const fs::path &copia, const PedidoDeRestauracao &pedido, const Instante &agora,
                             const AndamentoDaCopia &andamento, DesfechoDaCopia &desfecho) const
{
    ExigeSozinha(copia);
    const FichaDoRegistro ficha = FichaDaCopia(copia);
    ExigeDoMesmo(ficha, pedido, {});
    LigacaoPostgres ligacao(m_Registro);
    Transporte::ExigeVazio(ligacao); // asked again when it counts
    QTemporaryDir pasta;
    if (!pasta.isValid()) {
        throw Recusada("Não foi possível fazer uma pasta temporária (" + S(pasta.errorString()) + ").");
    }
    const fs::path arquivo = S(pasta.filePath("registro.db"));
    CriaArquivoPrivado(arquivo);
    desfecho.Achados = Prepara(copia, arquivo, ficha, agora, andamento, 0.5);
    if (!desfecho.Achados.empty()) {
        return;
    }
    {
        ArquivoSQLite preparada(arquivo, ArquivoSQLite::Modo::Parado);
        Transporte::Leva(preparada, ligacao, ParteDoAndamento(andamento, 0.5, 1));
    }
    desfecho.Feita = true;
    desfecho.Frase = "O registro foi restaurado da cópia " + copia.string() + ": está no " + ligacao.Nome() + ".";
}

void Restauracao::NoArquivo(const fs::path &copia, const PedidoDeRestauracao &pedido, const Instante &agora,
                            const AndamentoDaCopia &andamento, DesfechoDaCopia &desfecho) const
{
    const fs::path registro = LugarVerdadeiro(m_Registro);
    if (copia == registro) {
        throw Recusada("O arquivo " + pedido.Arquivo + " é o próprio registro.");
    }
    const std::string rede = DiscoDeRede(registro);
    if (!rede.empty()) {
        throw Recusada("O registro está em um disco de rede (" + rede +
                       "), onde não se trabalha: restaure-o em um disco deste computador.");
    }
    ExigeSozinha(copia);
    const FichaDoRegistro ficha = FichaDaCopia(copia);
    ExigeDoMesmo(ficha, pedido, registro);

    if (!fs::exists(registro.parent_path())) {
        FazPastaPrivada(registro.parent_path());
    }
    ArquivoEmPreparo preparo(LugarEmRestauracao(registro), "Outra restauração está sendo feita.");
    desfecho.Achados = Prepara(copia, preparo.Caminho(), ficha, agora, andamento, 1);
    if (!desfecho.Achados.empty()) {
        return;
    }
    preparo.Sincroniza();

    const TravaDaPasta trava(registro.parent_path(), TravaDaPasta::Uso::DeUm,
                             "Outra estação está abrindo ou restaurando o registro. Tente de novo.");
    DesfazRestauracao(registro);
    try {
        const fs::path guardado = Afasta(registro, agora);
        preparo.TomaOLugar(registro);
        desfecho.Arquivo = guardado.string();
    } catch (...) {
        IgnoraErro([&] { DesfazRestauracao(registro); });
        throw;
    }
    desfecho.Feita = true;
    desfecho.Frase = "O registro foi restaurado da cópia " + copia.string() + ".";
    if (!desfecho.Arquivo.empty()) {
        desfecho.Frase += " O que estava no lugar dele ficou guardado em " + desfecho.Arquivo + ".";
    }
}

} // namespace mesa
