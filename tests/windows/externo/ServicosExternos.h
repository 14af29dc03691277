#pragma once

#include "tests/windows/externo/RegistroExterno.h"

#include <map>
#include <string>

namespace nativo {

// The remote services of the host: a small registry in memory. What they are asked goes to the diary, with the record
// as it came.
class ServicosExternos {
  public:
    explicit ServicosExternos(Diario &diario);

    // What the session's gateway makes.
    Contado<ObjetoExterno> Gateway();

    // The operation is refused with that sentence, once.
    void Recusa(const std::string &operacao, const std::string &frase) { m_Recusas[operacao] = frase; }
    Contado<RegistroExterno> Equipamento(std::int32_t numero) const { return m_Equipamentos.at(numero); }
    const std::map<std::int32_t, std::string> &Documentos() const { return m_Documentos; }
    // Keeps a document and gives its number.
    std::int32_t GuardaDocumento(const std::string &conteudo);
    // Number of the equipment of the session's client with that code; none below 1.
    std::int32_t NumeroDoCodigo(const std::string &cliente, const std::string &codigo, const std::string &tipo) const;

    // Who the session is.
    static constexpr const char *Cliente = "Autoridade Municipal";
    static constexpr const char *Setor = "Fiscalização";

  private:
    Contado<ObjetoExterno> Proxy(const std::string &servico);
    Var Executa(const std::string &servico, const std::string &operacao, IDispatch *pedido);
    Contado<RegistroExterno> Pedido(const std::string &servico, const std::string &operacao, const std::string &classe,
                                    IDispatch *pedido);
    Var Lista(const RegistroExterno &criterios);
    Var Inclui(const Contado<RegistroExterno> &pedido);
    void Altera(const RegistroExterno &pedido);
    Var Vigente(const RegistroExterno &consulta);
    Var Certificado(const Contado<RegistroExterno> &pedido);
    void Numera(RegistroExterno &equipamento);

    Diario &m_Diario;
    std::map<std::int32_t, Contado<RegistroExterno>> m_Equipamentos;
    std::map<std::int32_t, std::string> m_Documentos;
    std::map<std::string, std::string> m_Recusas;
    std::int32_t m_Ultimo = 100;
};

} // namespace nativo
