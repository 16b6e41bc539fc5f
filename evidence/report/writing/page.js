(() => {
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
