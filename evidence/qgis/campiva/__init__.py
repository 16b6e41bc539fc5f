"""Campiva in QGIS: a municipality's drawings, the messages of its last run, and the translations."""


def classFactory(iface):  # noqa: N802 - the name that QGIS asks for
    """Makes the plugin. What needs QGIS is imported here: all else is tried without it."""
    from .plugin import Complemento

    return Complemento(iface)
