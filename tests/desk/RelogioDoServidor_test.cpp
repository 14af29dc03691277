#include "desk/host/RelogioDoServidor.h"

#include "services/Calendario.h"
#include "tests/services/RegistroDeTeste.h"

#include <gtest/gtest.h>

using std::chrono::steady_clock;

TEST(RelogioDoServidorTeste, Agora_IsWhatTheServerSaidAndTheTimeSince)
{
    steady_clock::time_point conta;
    mesa::RelogioDoServidor relogio([&] { return conta; });
    const Data dita = DataDe(31, 12, 2031, 23, 0, 0); // no day of this computer
    EXPECT_NE(mesa::DiaCivil(relogio.Agora()), mesa::DiaCivil(dita));
    relogio.Acerta(dita);
    EXPECT_EQ(relogio.Agora().Valor, dita.Valor);
    conta += std::chrono::hours(3);
    EXPECT_NEAR(relogio.Agora().Valor, DataDe(1, 1, 2032, 2, 0, 0).Valor, 1e-6);
    // Set anew, as when somebody signs in again.
    relogio.Acerta(DataDe(1, 1, 2032));
    EXPECT_EQ(relogio.Agora().Valor, DataDe(1, 1, 2032).Valor);
}
