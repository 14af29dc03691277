#pragma once

#include "tests/support/HostRoteirizado.h"
#include "tests/support/RegistroIgual.h"

#include "shell/Geral.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Fixture with a scripted host, installed while the test runs. At its end the module is taken away and every problem
// that the host has seen fails the test. A fixture with members that hold objects of the module or of the host lets
// them go in a TearDown of its own, before it calls this one.
class HostTeste : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // A shell on which the host has logged on, kept in `geral` until the end; the log starts after it.
    void LogaGeral();
    // That so many error boxes have been shown, the last of them with this context and fault, as FalhaIgual tells it.
    testing::AssertionResult MostrouErro(std::size_t quantos, const std::string &contexto, std::int32_t numero,
                                         const std::string &fonte);

    // Each of these calls of the host fails once: the command raises that fault, with the tail behind the call's name.
    void FalhaEmCada(const std::vector<std::string> &passos, const std::string &cauda,
                     const std::function<void()> &comando);

    // The error boxes that the person was shown, each "context|number|description|source|title".
    std::vector<std::string> ErrosInteiros() const;

    Ref<HostRoteirizado> host = Novo<HostRoteirizado>();
    Ref<Geral> geral;
};

// What a host does from the creation of the shell to the logon. The log of the host is forgotten then.
Ref<Geral> LogaGeral(HostRoteirizado &host);
