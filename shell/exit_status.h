#pragma once

class CWinApp;

/// Exit statuses of the program.
namespace estado {

inline constexpr int kHecho = 0;
inline constexpr int kHuboError = 1;  ///< an error box, or a command that couldn't be done
inline constexpr int kNadaPedido = 2; ///< a line that fits no route, dialogs without commands
inline constexpr int kDetenido = 130; ///< a run ended early because the user stopped it

} // namespace estado

/// Exit status of the process, once the application has run. A person at the dialogs has seen what
/// came of his commands, so that they end with 0.
int EstadoSalida(const CWinApp& aplicacion);
