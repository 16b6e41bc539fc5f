(() => {
  const kLetra = 12, kMenor = 250; // pixels of a label; decimetres of the closest view
  const orden = {rg: 0, re: 0, rp: 0, rm: 1, ra: 2, r: 3, rs: 4, rl: 5};
  const une = cajas => {
    const x = Math.min(...cajas.map(c => c.x)), y = Math.min(...cajas.map(c => c.y));
    return {x, y, w: Math.max(...cajas.map(c => c.x + c.width)) - x,
            h: Math.max(...cajas.map(c => c.y + c.height)) - y};
  };

  class Mapa {
    constructor(svg) {
      this.svg = svg;
      this.todo = svg.getAttribute('viewBox').split(' ').map(Number);
      this.vista = this.fijada = this.todo;
      this.letra = parseFloat(svg.style.fontSize);
      this.dedos = new Map();
      this.rotulos = [...svg.querySelectorAll('text:not(.pie)')].map(t => {
        const clase = t.getAttribute('class').split(' ')[0], chica = {rl: .75, rm: .85, rg: 1.2}[clase] || 1;
        return {t, cabe: +t.dataset.w * (orden[clase] < 3 ? 1.7 : 1.1) || Infinity, x: +t.getAttribute('x'), y: +t.getAttribute('y'), baja: clase === 'rm' ? 1.2 : 0,
                medio: t.textContent.length * .32 * chica, orden: orden[clase] ?? 3, visto: true};
      }).sort((a, b) => a.orden - b.orden);
      this.tramas = [...svg.querySelectorAll('pattern')];
      this.viste();
      this.oye();
      new ResizeObserver(() => this.fija()).observe(svg);
    }

    viste() {
      this.marco = document.createElement('div');
      this.marco.className = 'marco';
      this.svg.replaceWith(this.marco);
      const mandos = document.createElement('div');
      mandos.className = 'mandos';
      for (const [texto, nombre, hace] of [['+', 'Acercar', () => this.acerca(1.6)],
                                           ['−', 'Alejar', () => this.acerca(1 / 1.6)],
                                           ['⤢', 'Ver todo', () => this.pon(this.todo)]]) {
        const boton = document.createElement('button');
        boton.type = 'button';
        boton.textContent = texto;
        boton.title = nombre;
        boton.setAttribute('aria-label', nombre);
        boton.addEventListener('click', hace);
        mandos.append(boton);
      }
      this.regla = document.createElement('span');
      this.regla.className = 'regla';
      this.marco.append(mandos, this.svg, this.regla);
      this.svg.setAttribute('tabindex', '0');
    }

    oye() {
      const svg = this.svg;
      const paso = (x, y) => () => this.mueve(x * this.vista[2] / 5, y * this.vista[3] / 5);
      const teclas = {'+': () => this.acerca(1.6), '=': () => this.acerca(1.6),
                      '-': () => this.acerca(1 / 1.6), '0': () => this.pon(this.todo),
                      ArrowLeft: paso(-1, 0), ArrowRight: paso(1, 0),
                      ArrowUp: paso(0, -1), ArrowDown: paso(0, 1)};
      svg.addEventListener('keydown', ev => {
        const hace = teclas[ev.key];
        if (!hace || ev.ctrlKey || ev.altKey || ev.metaKey) return;
        ev.preventDefault();
        hace();
      });
      // The wheel scrolls the page until the map is in use.
      svg.addEventListener('wheel', ev => {
        if (!ev.ctrlKey && document.activeElement !== svg) return;
        ev.preventDefault();
        this.acerca(Math.exp(-Math.max(-120, Math.min(120, ev.deltaY)) / 300), this.punto(ev));
      }, {passive: false});
      svg.addEventListener('pointerdown', ev => {
        this.dedos.set(ev.pointerId, ev);
        this.arrastra = 0;
      });
      svg.addEventListener('pointermove', ev => this.tira(ev));
      for (const fin of ['pointerup', 'pointercancel'])
        svg.addEventListener(fin, ev => this.dedos.delete(ev.pointerId));
      svg.addEventListener('click', ev => {
        if (this.arrastra > 6) {
          ev.preventDefault(); // the end of a drag is no click on what lies there
          ev.stopPropagation();
        } else {
          const pieza = ev.target.closest('[data-p]');
          if (pieza && !ev.target.closest('a')) this.marca(this.piezas(pieza));
        }
      }, true);
    }

    tira(ev) {
      const antes = this.dedos.get(ev.pointerId);
      if (!antes) return;
      const otro = [...this.dedos.values()].find(d => d.pointerId !== ev.pointerId);
      const p = this.escala(this.vista);
      this.arrastra += Math.abs(ev.clientX - antes.clientX) + Math.abs(ev.clientY - antes.clientY);
      if (this.arrastra > 6 && !this.svg.hasPointerCapture(ev.pointerId))
        this.svg.setPointerCapture(ev.pointerId);
      if (otro) {
        const lejos = d => Math.hypot(d.clientX - otro.clientX, d.clientY - otro.clientY) || 1;
        this.acerca(lejos(ev) / lejos(antes), this.punto(otro));
      } else if (ev.pointerType === 'mouse' || this.vista[2] < this.todo[2]) {
        this.mueve((antes.clientX - ev.clientX) / p, (antes.clientY - ev.clientY) / p);
      }
      this.dedos.set(ev.pointerId, ev);
    }

    // How far below the frame's top the drawing begins; SVG knows no offsetTop.
    desde() { return this.marco.clientHeight - this.svg.clientHeight; }

    escala(vista) { return Math.min(this.svg.clientWidth / vista[2], this.svg.clientHeight / vista[3]); }

    // Where the drawing's corner is on the screen, and how many pixels a unit has.
    pone(vista) {
      const p = this.escala(vista);
      return [(this.svg.clientWidth - vista[2] * p) / 2 - vista[0] * p,
              (this.svg.clientHeight - vista[3] * p) / 2 - vista[1] * p, p];
    }

    punto(ev) {
      const caja = this.marco.getBoundingClientRect(), [x, y, p] = this.pone(this.vista);
      return [(ev.clientX - caja.left - x) / p,
              (ev.clientY - caja.top - this.desde() - y) / p];
    }

    acerca(veces, centro) {
      const [x, y, w, h] = this.vista, [cx, cy] = centro || [x + w / 2, y + h / 2];
      const ancho = Math.max(Math.min(w / veces, this.todo[2]), Math.min(kMenor, this.todo[2]));
      const f = ancho / w;
      this.pon([cx - (cx - x) * f, cy - (cy - y) * f, ancho, h * f]);
    }

    mueve(dx, dy) { this.pon([this.vista[0] + dx, this.vista[1] + dy, this.vista[2], this.vista[3]]); }

    // Shows a part of the drawing: at once by moving what is painted, and soon by painting anew.
    pon([x, y, w, h]) {
      const [tx, ty, tw, th] = this.todo;
      this.vista = [Math.max(tx, Math.min(x, tx + tw - w)), Math.max(ty, Math.min(y, ty + th - h)), w, h];
      const [ax, ay, ap] = this.pone(this.fijada), [bx, by, bp] = this.pone(this.vista), s = bp / ap;
      this.svg.style.transform = `translate(${bx - ax * s}px,${by - ay * s}px) scale(${s})`;
      clearTimeout(this.espera);
      this.espera = setTimeout(() => this.fija(), 120);
    }

    fija() {
      if (!this.svg.clientWidth) return;
      clearTimeout(this.espera);
      this.fijada = this.vista;
      this.svg.style.transform = '';
      this.svg.setAttribute('viewBox', this.vista.join(' '));
      this.svg.style.touchAction = this.vista[2] < this.todo[2] ? 'none' : 'pan-y';
      const p = this.escala(this.vista), letra = kLetra / p, k = letra / this.letra;
      this.svg.style.fontSize = letra + 'px';
      this.svg.style.setProperty('--k', k);
      for (const t of this.tramas)
        t.setAttribute('patternTransform', (t.id.startsWith('te') ? 'rotate(45) ' : '') + `scale(${k})`);
      this.rotula(letra);
      const m = 10 ** Math.floor(Math.log10(16 / p)), metros = m * ([5, 2].find(v => v * m * p * 10 < 160) || 1);
      this.regla.style.width = metros * 10 * p + 'px';
      this.regla.textContent = metros.toLocaleString('es') + ' m';
    }

    // Labels that their outlines have room for, none on another one: those that matter most first.
    rotula(letra) {
      const [x, y, w, h] = this.vista, ocupadas = new Set();
      for (const r of this.rotulos) {
        const cy = r.y + r.baja * letra, medio = r.medio * letra;
        let visto = 2 * medio < r.cabe && r.x > x && r.x < x + w && cy > y && cy < y + h;
        if (visto) {
          const celdas = [], celda = v => Math.floor(v * 4 / letra), alto = .45 * letra;
          for (let i = celda(r.x - medio); i <= celda(r.x + medio); ++i)
            for (let j = celda(cy - alto); j <= celda(cy + alto); ++j) celdas.push(i * 1e6 + j);
          visto = celdas.every(c => !ocupadas.has(c));
          if (visto) celdas.forEach(c => ocupadas.add(c));
        }
        if (visto !== r.visto) r.t.style.display = visto ? '' : 'none';
        r.visto = visto;
      }
    }

    piezas(una) {
      const suyas = una.dataset.p ? [...this.svg.querySelectorAll(`[data-p="${una.dataset.p}"]`)] : [];
      return suyas.length ? suyas : [una];
    }

    marca(piezas) {
      document.querySelectorAll('.aqui').forEach(otra => otra.classList.remove('aqui'));
      piezas.forEach(pieza => pieza.classList.add('aqui'));
    }

    // Puts what a link leads to in the middle, with all outlines of the parcel.
    va(destino) {
      const piezas = this.piezas(destino), caja = une(piezas.map(pieza => pieza.getBBox()));
      const [, , tw, th] = this.todo;
      const ancho = Math.min(tw, Math.max(caja.w * 2.5, caja.h * 2.5 * tw / th, 1500)), alto = ancho * th / tw;
      this.marca(piezas);
      this.pon([caja.x + caja.w / 2 - ancho / 2, caja.y + caja.h / 2 - alto / 2, ancho, alto]);
      this.fija();
      this.marco.scrollIntoView({block: 'center'});
    }
  }

  // A map comes to life when it comes near the screen: a municipality may have hundreds.
  const mapas = new Map();
  const mapa = svg => mapas.get(svg) || (mapas.set(svg, new Mapa(svg)), mapas.get(svg));
  const cerca = new IntersectionObserver(vistos => vistos.forEach(v => {
    if (!v.isIntersecting) return;
    cerca.unobserve(v.target);
    mapa(v.target);
  }), {rootMargin: '600px'});
  document.querySelectorAll('svg.mapa').forEach(svg => cerca.observe(svg));
  const ve = () => {
    const destino = document.getElementById(decodeURIComponent(location.hash.slice(1)));
    const svg = destino && destino.closest('svg.mapa');
    if (svg) mapa(svg).va(destino);
  };
  addEventListener('hashchange', ve);
  document.addEventListener('click', ev => {
    const enlace = ev.target.closest('a[href^="#"]');
    if (enlace && (enlace.hash || enlace.href.baseVal) === location.hash) ve();
  });
  addEventListener('load', ve);
  // On paper a map is whole, whatever was looked at.
  addEventListener('beforeprint', () => mapas.forEach(m => { m.vista = m.todo; m.fija(); }));
})();
