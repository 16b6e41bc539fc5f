#pragma once

#include <string>
#include <string_view>
#include <thread>

/// The standard streams of a program, as somebody at a terminal or a script gives them, as long as
/// it lives. The terminal is a true one to the system. What is shown on it goes nowhere; whoever
/// types has typed all ahead, and then nothing but Ctrl-D. Its keys are keys, no signals.
class CFlujos {
public:
    struct CComo {
        bool teclado;  ///< the standard input is the terminal, else a file
        bool pantalla; ///< the standard output and error are, else they stay what they are
        int columnas;  ///< of the terminal; 0: it doesn't tell
    };

    /// \param fichero   where a script's input is put
    CFlujos(const CComo& como, std::string_view tecleado, const std::string& fichero);
    CFlujos(const CFlujos&) = delete;
    CFlujos& operator=(const CFlujos&) = delete;
    ~CFlujos();

private:
    void AbreTerminal(int columnas);
    void Cambia(int flujo, int por);
    void Teclea();

    static constexpr int kFlujos = 3;
    int m_antes[kFlujos];
    int m_maestro = -1;
    int m_terminal = -1;
    std::string m_teclas;
    std::thread m_persona;
};
