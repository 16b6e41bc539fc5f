(() => {
  const lista = document.getElementById('lista'), filtro = document.getElementById('filtro');
  if (!lista || !filtro) return;
  const filas = [...lista.tBodies[0].rows];
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
  filtro.addEventListener('input', filtra);
  filtro.addEventListener('submit', ev => ev.preventDefault());
  filtro.addEventListener('reset', () => setTimeout(filtra));
  filtro.hidden = false;
  filtra();
  // A link to a row that the filter hides shows it, and one to a number its messages.
  const ve = () => {
    const fila = document.getElementById(location.hash.slice(1));
    if (!fila || !fila.hidden) return;
    filtro.reset();
    filtra();
    fila.scrollIntoView({block: 'center'});
  };
  addEventListener('hashchange', ve);
  document.addEventListener('click', ev => {
    const enlace = ev.target.closest('a[href^="#m"]');
    if (!enlace) return;
    if (enlace.dataset.codigo) {
      filtro.reset();
      e.codigo.value = enlace.dataset.codigo;
      filtra();
    } else if (enlace.hash === location.hash) ve();
  });
  ve();
})();
