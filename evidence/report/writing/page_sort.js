(() => {
  // Numbers are as one writes them: 1.234,5.
  const numero = texto => parseFloat(texto.replaceAll('.', '').replace(',', '.')) || 0;
  for (const tabla of document.querySelectorAll('#lista, #trabajos')) {
    const cuerpo = tabla.tBodies[0], filas = [...cuerpo.rows], cabezas = [...tabla.tHead.rows[0].cells];
    const celda = (fila, i) => fila.cells[i].textContent;
    const ordena = i => {
      const baja = cabezas[i].getAttribute('aria-sort') === 'ascending', s = baja ? -1 : 1;
      for (const otra of cabezas) otra.removeAttribute('aria-sort');
      cabezas[i].setAttribute('aria-sort', baja ? 'descending' : 'ascending');
      const compara = cabezas[i].className === 'n' ? (a, b) => numero(a) - numero(b)
                                                   : (a, b) => a.localeCompare(b, 'es');
      filas.sort((a, b) => s * compara(celda(a, i), celda(b, i)));
      cuerpo.append(...filas);
    };
    cabezas.forEach((th, i) => {
      const boton = document.createElement('button');
      boton.type = 'button';
      boton.textContent = th.textContent;
      boton.addEventListener('click', () => ordena(i));
      th.replaceChildren(boton);
    });
  }
})();
