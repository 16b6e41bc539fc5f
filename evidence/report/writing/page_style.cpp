#include "evidence/report/writing/page.h"

// How the page looks, and the few lines that filter and sort the list of messages. It is read
// without them as well.

namespace informe {
namespace {

constexpr const char* kEstilo =
    R"(:root{color-scheme:light dark;--papel:#fcfcfa;--tinta:#23262b;--tenue:#646b75;--raya:#d9dbd6;--fondo:#f1f2ee;--err:#a82a1e;--avi:#8a5a00;--bien:#2f6b3c;--azul:#1f5a96}
@media (prefers-color-scheme:dark){:root{--papel:#191b1e;--tinta:#dfe1e3;--tenue:#9aa2ac;--raya:#3a3e44;--fondo:#23262a;--err:#f0887c;--avi:#e0b25a;--bien:#86c795;--azul:#8db9ea}}
*{box-sizing:border-box}
body{margin:0;background:var(--papel);color:var(--tinta);font:15px/1.5 system-ui,"Segoe UI","Liberation Sans",Arial,sans-serif}
header,main,footer{max-width:68rem;margin:0 auto;padding:0 1.5rem}
header{padding-top:2rem}
h1{font-size:2rem;line-height:1.2;margin:0;font-weight:600}
h2{font-size:1.3rem;font-weight:600;margin:2.5rem 0 .75rem;padding-bottom:.3rem;border-bottom:2px solid var(--raya)}
h3{font-size:1rem;font-weight:600;margin:1.2rem 0 .4rem}
p{margin:.4rem 0}
a{color:var(--azul);text-decoration-thickness:1px;text-underline-offset:2px}
.sobre{margin:0;color:var(--tenue);letter-spacing:.08em;text-transform:uppercase;font-size:.78rem}
.sentido{font-size:1.05rem;color:var(--tenue);margin:.2rem 0 1rem}
.cifras{list-style:none;display:flex;flex-wrap:wrap;gap:.75rem;margin:0 0 1rem;padding:0}
.cifras li{border:1px solid var(--raya);border-radius:6px;padding:.5rem 1rem;min-width:8rem;background:var(--fondo);color:var(--tenue)}
.cifras b{display:block;font-size:1.6rem;line-height:1.2;font-weight:600;color:var(--tinta);font-variant-numeric:tabular-nums}
.cifras .err b{color:var(--err)}.cifras .avi b{color:var(--avi)}.cifras .cero b{color:var(--bien)}
nav a{margin-right:1rem}
.nota,.lineas{color:var(--tenue);font-size:.92rem}
.alarma{color:var(--err);font-weight:600}
header .alarma{border:1px solid var(--err);border-radius:6px;padding:.6rem 1rem}
.cuadra{color:var(--bien)}
.ancha{overflow-x:auto}
table{border-collapse:collapse;width:100%;font-size:.92rem}
th,td{text-align:left;vertical-align:top;padding:.28rem .6rem;border-bottom:1px solid var(--raya)}
th{font-weight:600;color:var(--tenue);white-space:nowrap}
.n{text-align:right;font-variant-numeric:tabular-nums;white-space:nowrap}
.suma,.nombre{font-variant-numeric:tabular-nums}
td.suma,.codigo{font-family:ui-monospace,"Liberation Mono",Consolas,monospace;font-size:.88em}
td.nombre{overflow-wrap:anywhere}
tr.mal td{color:var(--err)}
.partidas{border:1px solid var(--raya);border-radius:6px;padding:.2rem 1rem .5rem;margin:.75rem 0;break-inside:avoid}
.partidas h3{margin-top:.6rem}
.partidas>div{display:grid;grid-template-columns:repeat(auto-fit,minmax(18rem,1fr));gap:0 2rem;align-items:start}
.partida caption{text-align:left;color:var(--tenue);font-size:.85rem;padding:.1rem .6rem}
.partida tr:last-child td{border-bottom:0}
.partida tr.suma td{border-top:1px solid var(--tinta);border-bottom:0;font-weight:600}
.callado td{font-weight:600;color:var(--avi)}.callado td:first-child::before{content:"▸ "}
.asuntos{padding-left:2.2rem}.asuntos li{margin:.5rem 0;break-inside:avoid}
.asuntos li::marker{color:var(--tenue)}
.asuntos li.err>b{color:var(--err)}.asuntos li.avi>b{color:var(--avi)}
small{color:var(--tenue)}
.numero{border-left:3px solid var(--raya);padding:.1rem 0 .3rem 1rem;margin:1rem 0;break-inside:avoid;max-width:52rem}
.numero.err{border-color:var(--err)}.numero.avi{border-color:var(--avi)}
.numero h3{margin:.2rem 0}
.numero .cuantos{color:var(--tenue);font-weight:400}.cuantos::before{content:"× "}
#filtro{display:flex;flex-wrap:wrap;gap:.5rem 1rem;align-items:center;margin:.5rem 0;padding:.5rem .8rem;background:var(--fondo);border-radius:6px}
#filtro[hidden]{display:none}
input,select{font:inherit;color:inherit;background:var(--papel);border:1px solid var(--raya);border-radius:4px;padding:.1rem .35rem}
#lista th{cursor:pointer}#lista th[aria-sort]::after{content:" ↑"}#lista th[aria-sort=descending]::after{content:" ↓"}
#lista .err td:nth-child(2){color:var(--err)}#lista .avi td:nth-child(2){color:var(--avi)}#lista .ajena td{font-style:italic}
tr:target td,li:target{background:var(--fondo);box-shadow:inset 0 2px var(--azul),inset 0 -2px var(--azul)}
.poligono{break-inside:avoid-page;margin:1.5rem 0}
.mapa{display:block;width:100%;max-height:46rem;border:1px solid var(--raya);border-radius:6px;background:var(--papel)}
.mapa path,.muestra path{vector-effect:non-scaling-stroke;stroke-linejoin:round}
.ok,.err,.avi,.sin,.sub{fill:none;fill-rule:evenodd;stroke:var(--tinta);stroke-width:1.1}
path.ok{fill:var(--papel)}
path.err{fill:var(--te);stroke:var(--err);stroke-width:1.8}
path.avi{fill:var(--ta);stroke:var(--avi);stroke-width:1.6}
path.sin{stroke:var(--tenue);stroke-dasharray:1.5 3;stroke-width:1.6}
path.pieza{stroke-dasharray:8 3}
path.sub{stroke-width:.6}path.sub.ok{fill:none;stroke:var(--tenue)}
path:target{stroke:var(--azul);stroke-width:4}
.mapa path.te,.muestra path.te{vector-effect:none}
.te{stroke:var(--err);fill:none;opacity:.55}.ta{fill:var(--avi);opacity:.8}
.mapa text{fill:var(--tinta);text-anchor:middle;dominant-baseline:middle;paint-order:stroke;stroke:var(--papel);stroke-width:.25em;stroke-linejoin:round;font-weight:600}
.mapa text.re{fill:var(--err)}.mapa text.ra{fill:var(--avi)}.mapa text.rs{fill:var(--tenue);font-style:italic}
.mapa text.rl{font-size:.72em;font-weight:400;fill:var(--tenue)}
.mapa text.pie{text-anchor:start;font-weight:400}
.cruz{fill:none;stroke:var(--err);stroke-width:2.6}
.escala{fill:none;stroke:var(--tinta);stroke-width:1.4}.norte{fill:var(--tinta);stroke:none}
.leyenda{display:flex;flex-wrap:wrap;gap:.3rem 1.4rem;font-size:.88rem;color:var(--tenue)}
.muestra{display:inline-flex;align-items:center;gap:.4rem}.muestra svg{width:26px;height:16px}
footer{margin:3rem auto 2rem;color:var(--tenue);font-size:.88rem}
@page{size:A4;margin:16mm 14mm}
@media print{:root{--papel:#fff;--tinta:#000;--tenue:#444;--raya:#bbb;--fondo:#fff;--err:#8f1d12;--avi:#6b4500;--bien:#1d4d28;--azul:#000}
body{font-size:9.5pt}header,main,footer{max-width:none;padding:0}nav,#filtro{display:none!important}a{text-decoration:none}h2,h3{break-after:avoid}thead{display:table-header-group}tr{break-inside:avoid}table{font-size:8pt;line-height:1.3}th,td{padding:.1rem .35rem}#lista td:last-child,#lista th:last-child{display:none}.mapa{max-height:22cm}}
)";

constexpr const char* kGuion = R"((() => {
  const lista = document.getElementById('lista'), filtro = document.getElementById('filtro');
  if (!lista || !filtro) return;
  const cuerpo = lista.tBodies[0], filas = [...cuerpo.rows];
  const celda = (fila, i) => fila.cells[i].textContent;
  const e = filtro.elements;
  [...new Set(filas.map(f => celda(f, 1)))].sort().forEach(c => e.codigo.add(new Option(c, c)));
  const filtra = () => {
    const texto = e.texto.value.toLowerCase();
    let vistas = 0;
    for (const f of filas) {
      const si = (!e.codigo.value || celda(f, 1) === e.codigo.value) &&
        (!e.polig.value || celda(f, 2) === e.polig.value.trim()) &&
        (!e.parcela.value || celda(f, 3) === e.parcela.value.trim()) &&
        (!texto || celda(f, 5).toLowerCase().includes(texto));
      f.hidden = !si;
      vistas += si;
    }
    e.cuantos.value = vistas.toLocaleString('es') + ' de ' + filas.length.toLocaleString('es');
  };
  const numeros = new Set([0, 2, 3]);
  [...lista.tHead.rows[0].cells].forEach((th, i) => th.addEventListener('click', () => {
    const baja = th.getAttribute('aria-sort') === 'ascending';
    for (const otra of lista.tHead.rows[0].cells) otra.removeAttribute('aria-sort');
    th.setAttribute('aria-sort', baja ? 'descending' : 'ascending');
    const s = baja ? -1 : 1;
    filas.sort((a, b) => s * (numeros.has(i) ? celda(a, i) - celda(b, i)
                                             : celda(a, i).localeCompare(celda(b, i), 'es')));
    cuerpo.append(...filas);
  }));
  filtro.addEventListener('input', filtra);
  filtro.addEventListener('submit', ev => ev.preventDefault());
  filtro.hidden = false;
  filtra();
})();
)";

} // namespace

std::string Estilo()
{
    return kEstilo;
}

std::string Guion()
{
    return kGuion;
}

} // namespace informe
