#include <csignal>
#include <cstdlib>

#include <gtest/gtest.h>

#include "platform/system.h"

namespace {

/// An environment variable for the length of a test; null takes it away.
class CVariable {
public:
    CVariable(const char* nombre, const char* valor) : m_nombre(nombre)
    {
        const char* antes = std::getenv(nombre);
        m_habia = antes != nullptr;
        m_antes = m_habia ? antes : "";
        Pon(valor);
    }
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;
    ~CVariable() { Pon(m_habia ? m_antes.c_str() : nullptr); }

private:
    void Pon(const char* valor)
    {
        if (valor != nullptr)
            setenv(m_nombre, valor, 1);
        else
            unsetenv(m_nombre);
    }

    const char* m_nombre;
    bool m_habia = false;
    std::string m_antes;
};

} // namespace

TEST(Sistema, FindsTheFolderOfTheSettings)
{
    constexpr struct {
        const char* motivo;
        const char* xdg;
        const char* casa;
        const char* carpeta;
    } kCasos[] = {
        {"told", "/ajustes", "/casa", "/ajustes"},
        {"not told", nullptr, "/casa", "/casa/.config"},
        {"told in vain", "", "/casa", "/casa/.config"},
        {"a relative path is to be passed over", "ajustes", "/casa", "/casa/.config"},
        {"a user without a home", nullptr, nullptr, "./.config"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        const CVariable xdg("XDG_CONFIG_HOME", caso.xdg);
        const CVariable casa("HOME", caso.casa);
        EXPECT_EQ(sistema::CarpetaAjustes(), caso.carpeta);
    }
}

TEST(Sistema, NotesOneInterruptionAndEndsAtASecondThatNobodyAskedAbout)
{
    sistema::VigilaInterrupcion();
    EXPECT_FALSE(sistema::HuboInterrupcion());
    for (int vez = 0; vez < 2; ++vez) {
        std::raise(SIGINT);
        EXPECT_TRUE(sistema::HuboInterrupcion());
        EXPECT_FALSE(sistema::HuboInterrupcion()) << "it is told once";
    }
    EXPECT_EXIT((std::raise(SIGINT), std::raise(SIGINT)), testing::KilledBySignal(SIGINT), "");
    sistema::OlvidaInterrupcion();
    EXPECT_EXIT(std::raise(SIGINT), testing::KilledBySignal(SIGINT), "");
}
