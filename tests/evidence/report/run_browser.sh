#!/usr/bin/env bash
# The pages in a browser, which has to have run their scripts: what a link leads to, rows that a filter
# hides, maps and their labels; the summary of a batch on a narrow screen, sorted.
#   run_browser.sh CAMPIVA CAMPIVA-INFORME SAMPLES; CAMPIVA_BROWSER may name the browser
set -euo pipefail
campiva=$1 informe=$2 samples=$3
browser=${CAMPIVA_BROWSER:-$(command -v chromium || command -v chromium-browser || command -v google-chrome)} || exit 77
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export XDG_CONFIG_HOME=$work/config HOME=$work
cp -r "$samples/villanueva_dibujos_con_faltas" dibujos
cp -r "$samples/villanueva_tablas_con_faltas" tablas
"$campiva" 1 tablas/{Modulos,Titulares,Parcelas,Subparcelas,Parajes,Cotitulares}.txt \
  dibujos/poligonos.txt dibujos/ortos.TOP 0 0 0 < /dev/null > /dev/null 2>&1 || [ $? -eq 1 ]
"$informe" --tablas tablas dibujos/045127.ERR > /dev/null

failures=0
has() { # what, the document, a pattern that must stand in it
  grep -qE -- "$3" "$2" || { echo "$1: no $3" >&2; failures=1; }
}
# What becomes of the page, once it stands, by a step of its own; what it asked of the network.
document() { # page, the part behind #, name of the document
  "$browser" --headless --no-sandbox --disable-gpu --window-size=1280,900 --virtual-time-budget=3000 \
    ${extra:-} --enable-logging=stderr --dump-dom "file://$work/$1#$2" > "$3" 2> "$3.log"
  grep -E 'CONSOLE.*(Error|Refused|Failed)' "$3.log" >&2 && failures=1
  return 0
}
page=dibujos/045127.html

# A parcel in several outlines: all are marked, its map is in use, and a view is nearer than the whole.
parcel=$(grep -o 'data-p="[0-9-]*"' "$page" | head -1 | cut -d'"' -f2)
outlines=$(grep -c "data-p=\"$parcel\"" "$page")
document "$page" "p$parcel" parcel
[ "$(grep -cE 'class="[^"]* aqui"' parcel)" = "$outlines" ] ||
  { echo "$parcel: marked are not all $outlines outlines" >&2; failures=1; }
has "a map in use" parcel '<div class="marco"><div class="mandos"><button'
has "labels by scale" parcel '<text class="[a-z]*"[^>]* style="display: none;"'
has "a list that keys sort" parcel '<th[^>]*><button type="button">Código</button>'

# A row that a filter hides: the filter is set by a step of the page's own before the link is gone to.
sed 's|</body>|<script>document.getElementById("filtro").elements.codigo.value="W303";\
document.getElementById("filtro").dispatchEvent(new Event("input"));\
location.hash="m1";</script></body>|' "$page" > dibujos/filtrada.html
document dibujos/filtrada.html '' filtered
has "the row that was hidden" filtered '<tr id="m1" class="[a-z]*">'
sed 's|</body>|<script>document.querySelector("a[data-codigo=E113]").click();</script></body>|' \
  "$page" > dibujos/numero.html
document dibujos/numero.html '' number
[ "$(grep -oE '<tr id="m[0-9]+" class="[a-z]+">' number | wc -l)" = "$(grep -c ^E113: dibujos/045127.ERR)" ] ||
  { echo "a number doesn't lead to its messages" >&2; failures=1; }

# A summary as narrow as a telephone: nothing of it stands out, and its heads sort it by their numbers.
mkdir ida && cp "$samples/villanueva_con_faltas.txt" ida/entrada.txt
cp tablas/* dibujos
printf 'vuelta\tdibujos\nida\tida\nida\tno_hay\n' > lote.tsv
CAMPIVA=$campiva "$(dirname "$campiva")/campiva-lote" lote.tsv > /dev/null 2>&1 || [ $? -eq 1 ]
seq 1000 | sed 's|.*|E206: La parcela    1      2 ya existe|' >> ida/entrada.ERR # 1.032 is more than 420
"$informe" --resumen lote.tsv.resultados > /dev/null
cat > narrow.html << END
<iframe src="lote.tsv.resultados/resumen.html" style="width:390px;height:800px;border:0"></iframe><p></p>
<script>onload = () => {
  const page = document.querySelector('iframe').contentDocument, root = page.documentElement;
  const said = [root.scrollWidth <= root.clientWidth];
  const first = () => said.push(page.querySelector('#trabajos tbody .nombre').firstChild.textContent);
  first();
  for (let i = 0; i < 2; ++i) {
    const head = [...page.querySelectorAll('th button')].find(b => b.textContent === 'Errores');
    head.focus(), page.activeElement.click(), first();
  }
  document.querySelector('p').textContent = said.join(' ');
}</script>
END
extra=--allow-file-access-from-files document narrow.html '' narrow
has "a summary that fits and is sorted" narrow '<p>true dibujos no_hay ida</p>'
exit $failures
