#include "platform/desktop/toolkit.h"

#include <clocale>

#include <wx/utils.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

void PonNombreAccesible(wxWindow& widget, const wxString& nombre)
{
    if (nombre.empty())
        return;
#ifdef __WXGTK__
    if (AtkObject* accesible = gtk_widget_get_accessible(widget.GetHandle()))
        atk_object_set_name(accesible, nombre.utf8_str());
#else
    widget.SetName(nombre); // the system's own interface takes it from there
#endif
}

void TomaNombreDelMenu([[maybe_unused]] const char* entrada)
{
#ifdef __WXGTK__
    g_set_prgname(entrada);
#endif
}

wxString SumaDe(const wxString& fichero)
{
    wxString suma;
#ifdef __WXGTK__
    gchar* contenido = nullptr;
    gsize largo = 0;
    if (g_file_get_contents(fichero.fn_str(), &contenido, &largo, nullptr) != 0) {
        gchar* cifras = g_compute_checksum_for_data(
            G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(contenido), largo);
        suma = cifras;
        g_free(cifras);
        g_free(contenido);
    }
#endif
    return suma;
}

void TomaIdiomaDelSistema()
{
#ifdef LC_MESSAGES
    std::setlocale(LC_MESSAGES, "");
#endif
}

void MuestraBarras([[maybe_unused]] wxWindow& ventana)
{
#ifdef __WXGTK__
    gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(ventana.GetHandle()), FALSE);
#endif
}

bool AbreConElSistema(const wxString& ruta)
{
#ifdef __WXGTK__
    // The library's own way asks a helper program, which may fail behind its back.
    gchar* lugar = g_filename_to_uri(ruta.fn_str(), nullptr, nullptr);
    const bool abierto =
        lugar != nullptr && g_app_info_launch_default_for_uri(lugar, nullptr, nullptr) != 0;
    g_free(lugar);
    return abierto;
#else
    return wxLaunchDefaultApplication(ruta);
#endif
}

void HazModal(wxTopLevelWindow& ventana)
{
#ifdef __WXGTK__
    gtk_window_set_modal(GTK_WINDOW(ventana.GetHandle()), TRUE);
#else
    if (wxWindow* debajo = ventana.GetParent()) {
        debajo->Disable();
        ventana.Bind(wxEVT_DESTROY, [debajo](wxWindowDestroyEvent& suceso) {
            debajo->Enable();
            suceso.Skip();
        });
    }
#endif
}

void DejaAparte([[maybe_unused]] wxTopLevelWindow& ventana)
{
#ifdef __WXGTK__
    GtkWindowGroup* grupo = gtk_window_group_new();
    gtk_window_group_add_window(grupo, GTK_WINDOW(ventana.GetHandle()));
    g_object_unref(grupo); // the window keeps it
#endif
}
