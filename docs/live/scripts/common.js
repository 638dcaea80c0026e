'use strict';

// What the panels share. Each adds a function that is called with the library, and gets its part of the page ready.
const live = {
  panels: {},

  get(id) {
    return document.getElementById(id);
  },

  // A number as the library's streams write it: six digits, as few as it takes.
  format(number) {
    if (!Number.isFinite(number))
      return Number.isNaN(number) ? 'NaN' : number > 0 ? '∞' : '−∞';
    const text = String(Number(number.toPrecision(6)));
    return text.replace('-', '−').replace('e−', 'e-');
  },

  formatVector(vector) {
    return vector === null ? 'infinity' : `(${vector.map(live.format).join(', ')})`;
  },

  // Replaces the rows of a table by these, each a list of texts of which the first is the row's head.
  setRows(body, rows) {
    body.replaceChildren(...rows.map((texts) => {
      const row = document.createElement('tr');
      texts.forEach((text, index) => {
        const cell = document.createElement(index === 0 ? 'th' : 'td');
        if (index === 0)
          cell.scope = 'row';
        cell.textContent = text;
        row.append(cell);
      });
      return row;
    }));
  },

  // Shows a part of the plane, and as much around it as it takes to hold the points; they may be so far that dots remain.
  fit(svg, [left, top, width, height], points) {
    const distances = points.map(([x, y]) => Math.max(Math.abs((x - left) / width - 0.5), Math.abs((y - top) / height - 0.5)));
    const scale = Math.min(Math.max(1, 2.1 * Math.max(...distances)), 10);
    svg.setAttribute('viewBox', [
      left + width * (1 - scale) / 2, top + height * (1 - scale) / 2, width * scale, height * scale].join(' '));
  },

  draw(svg, name, className, attributes) {
    const shape = document.createElementNS('http://www.w3.org/2000/svg', name);
    shape.setAttribute('class', className);
    for (const [key, value] of Object.entries(attributes))
      shape.setAttribute(key, value);
    svg.append(shape);
    return shape;
  },

  // Sliders, each with its label and its number. Calls `changed` with all values, by their names, now and on changes.
  addSliders(parent, sliders, changed) {
    const inputs = {};
    const notify = () => {
      const values = {};
      for (const [name, {input, output}] of Object.entries(inputs)) {
        values[name] = input.valueAsNumber;
        output.textContent = live.format(values[name]);
      }
      changed(values);
    };
    for (const {name, label, min, max, step, value} of sliders) {
      const id = `${parent.id}-${name}`;
      const caption = document.createElement('label');
      caption.htmlFor = id;
      caption.textContent = label;
      const input = document.createElement('input');
      Object.assign(input, {id, type: 'range', min, max, step});
      input.value = value;
      const output = document.createElement('output');
      output.htmlFor = id;
      output.setAttribute('aria-live', 'off'); // the slider says it
      input.addEventListener('input', notify);
      parent.append(caption, input, output);
      inputs[name] = {input, output};
    }
    notify();
    return notify;
  },

  // A worker of a program of the library, which runs `work(start)` there.
  makeWorker(program, work) {
    const source = `(${work})((${program})());\n`;
    const address = URL.createObjectURL(new Blob([source], {type: 'text/javascript'}));
    const worker = new Worker(address);
    URL.revokeObjectURL(address);
    return worker;
  },
};
