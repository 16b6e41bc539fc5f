#include "platform/desktop/toolkit.h"

#include <gtk/gtk.h>

void PonNombreAccesible(wxWindow& widget, const wxString& nombre)
{
    AtkObject* accesible = gtk_widget_get_accessible(widget.GetHandle());
    if (accesible != nullptr && !nombre.empty())
        atk_object_set_name(accesible, nombre.utf8_str());
}

void TomaNombreDelMenu(const char* entrada)
{
    g_set_prgname(entrada);
}

wxString SumaDe(const wxString& fichero)
{
    gchar* contenido = nullptr;
    gsize largo = 0;
    if (g_file_get_contents(fichero.fn_str(), &contenido, &largo, nullptr) == 0)
        return {};
    gchar* cifras = g_compute_checksum_for_data(G_CHECKSUM_SHA256,
                                                reinterpret_cast<const guchar*>(contenido), largo);
    wxString suma = cifras;
    g_free(cifras);
    g_free(contenido);
    return suma;
}

void MuestraBarras(wxWindow& ventana)
{
    gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(ventana.GetHandle()), FALSE);
}

void TomaUnRenglon(wxWindow& campo)
{
    g_object_set(campo.GetHandle(), "truncate-multiline", TRUE, nullptr);
}

bool AbreConElSistema(const wxString& ruta)
{
    // The library's own way asks a helper program, which may fail behind its back.
    gchar* lugar = g_filename_to_uri(ruta.fn_str(), nullptr, nullptr);
    const bool abierto =
        lugar != nullptr && g_app_info_launch_default_for_uri(lugar, nullptr, nullptr) != 0;
    g_free(lugar);
    return abierto;
}

void HazModal(wxTopLevelWindow& ventana)
{
    gtk_window_set_modal(GTK_WINDOW(ventana.GetHandle()), TRUE);
}

void DejaAparte(wxTopLevelWindow& ventana)
{
    GtkWindowGroup* grupo = gtk_window_group_new();
    gtk_window_group_add_window(grupo, GTK_WINDOW(ventana.GetHandle()));
    g_object_unref(grupo); // the window keeps it
}
