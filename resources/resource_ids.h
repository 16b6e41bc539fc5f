#pragma once

#include "platform/types.h"

// Numbers of dialogs, controls and strings. They are fixed: the stored help texts and the closed
// libraries know them.

inline constexpr UINT IDD_ACERCA_DE = 100;
inline constexpr UINT IDR_ICONO = 128;
inline constexpr UINT IDB_IMAGEN = 133;
inline constexpr UINT IDD_TIPO_TRADUCCION = 134;
inline constexpr UINT IDD_CAMPIVA_A_VEXA = 135;
inline constexpr UINT IDD_VEXA_A_CAMPIVA2 = 139;
inline constexpr UINT IDD_VEXA_A_INFOGRAF = 140;

// The choice of translation, in the order of its values.
inline constexpr UINT IDC_DE_CATASTRO_A_VEXA = 1009;
inline constexpr UINT IDC_DE_VEXA_A_CATASTRO = 1010;
inline constexpr UINT IDC_DE_VEXA_A_INFOGRAF = 1011;

// Controls that the translation dialogs share.
inline constexpr UINT IDC_ACERCA_DE = 1007;
inline constexpr UINT IDC_ESTADO = 1008;
inline constexpr UINT IDC_PROGRESO = 1018;

// The six tables, in the dialogs of the first two translations.
inline constexpr UINT IDC_MODULOS = 1013;
inline constexpr UINT IDC_TITULARES = 1014;
inline constexpr UINT IDC_SUBPARCELAS = 1015;
inline constexpr UINT IDC_PARAJES = 1016;
inline constexpr UINT IDC_PARCELAS = 1017;
inline constexpr UINT IDC_COTITULARES = 1020;

// CCampivaAVexaDlg.
inline constexpr UINT IDC_ENTRADA = 1000;
inline constexpr UINT IDC_BUSCAR_ENTRADA = 1001;
inline constexpr UINT IDC_TIPO_ENTRADA = 1019;

// The drawings, in the dialogs of the last two translations.
inline constexpr UINT IDC_TREN = 1003;
inline constexpr UINT IDC_BUSCAR_TREN = 1004;
inline constexpr UINT IDC_ORTOS = 1005;
inline constexpr UINT IDC_BUSCAR_ORTOS = 1006;

// CVexaACampiva2Dlg.
inline constexpr UINT IDC_BUSCAR_MODULOS = 1022;
inline constexpr UINT IDC_BUSCAR_TITULARES = 1023;
inline constexpr UINT IDC_BUSCAR_PARCELAS = 1024;
inline constexpr UINT IDC_BUSCAR_SUBPARCELAS = 1025;
inline constexpr UINT IDC_BUSCAR_PARAJES = 1026;
inline constexpr UINT IDC_BUSCAR_COTITULARES = 1027;
inline constexpr UINT IDC_MODIFICAR = 1028;
inline constexpr UINT IDC_NO_EN_GRAFICO = 1029;
inline constexpr UINT IDC_NO_EN_BD = 1030;
inline constexpr UINT IDC_MODIFICAR_CONCENTRADAS = 1031;

// Values of the About dialog.
inline constexpr UINT IDC_COPYRIGHT = 1160;
inline constexpr UINT IDC_AUTOR = 1161;
inline constexpr UINT IDC_VERSION = 1162;
inline constexpr UINT IDC_NOMBRE = 1168;
inline constexpr UINT IDC_DESCRIPCION = 1169;

// Filters of the browse buttons.
inline constexpr UINT IDS_FILTRO_TODOS = 131;
inline constexpr UINT IDS_FILTRO_TOPOLOGIAS = 151;

// Status texts.
inline constexpr UINT IDS_NADA = 132;
inline constexpr UINT IDS_LEYENDO_BASE = 133;
inline constexpr UINT IDS_LEYENDO_POLIGONOS = 134;
inline constexpr UINT IDS_REGISTRANDO_PARCELAS = 135;
inline constexpr UINT IDS_REGISTRANDO_SUBPARCELAS = 136;
inline constexpr UINT IDS_REGISTRANDO_TITULARES = 137;
inline constexpr UINT IDS_GRABANDO_TITULARES = 138;
inline constexpr UINT IDS_REGISTRANDO_POLIGONOS = 139;
inline constexpr UINT IDS_GRABANDO_PARCELAS = 140;
inline constexpr UINT IDS_GRABANDO_SUBPARCELAS = 141;
inline constexpr UINT IDS_GRABANDO_PARAJES = 142;
inline constexpr UINT IDS_GRABANDO_COTITULARES = 143;
inline constexpr UINT IDS_LEYENDO_TITULARES = 144;
inline constexpr UINT IDS_LEYENDO_MODULOS = 145;
inline constexpr UINT IDS_LEYENDO_PARCELAS = 146;
inline constexpr UINT IDS_LEYENDO_SUBPARCELAS = 147;
inline constexpr UINT IDS_LEYENDO_PARAJES = 148;
inline constexpr UINT IDS_LEYENDO_COTITULARES = 149;
inline constexpr UINT IDS_ASIGNANDO_TITULARIDAD = 150;
inline constexpr UINT IDS_LEYENDO_ORTOS = 152;
inline constexpr UINT IDS_GRABANDO_MODULOS = 185;
// Status texts of the drawing library's phases, by which it reports with WM_ESTADO_ID.
inline constexpr UINT IDS_DIBUJO_PRIMERO = 21001;
inline constexpr UINT IDS_DIBUJO_ULTIMO = 21020;
