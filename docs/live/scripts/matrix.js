'use strict';

live.panels.matrix = (library) => {
  const matrix = new library.MatrixPanel();
  const drawing = live.get('matrix-drawing');
  const inputs = [];

  for (let row = 0; row < 4; ++row) {
    const line = document.createElement('tr');
    for (let column = 0; column < 4; ++column) {
      const input = document.createElement('input');
      const index = 4 * row + column;
      input.type = 'number';
      input.step = 'any';
      input.id = `matrix-element-${row + 1}${column + 1}`;
      input.setAttribute('aria-label', `Row ${row + 1}, column ${column + 1}`);
      input.addEventListener('change', () => {
        const value = input.valueAsNumber;
        input.setAttribute('aria-invalid', String(Number.isNaN(value)));
        if (Number.isNaN(value)) {
          live.get('matrix-failure').textContent = `Row ${row + 1}, column ${column + 1} is not a number.`;
          return;
        }
        matrix.setElement(index, value);
        show('');
      });
      inputs.push(input);
      line.insertCell().append(input);
    }
    live.get('matrix-elements').append(line);
  }

  // Corners of a cube that differ in one coordinate.
  const edges = [];
  for (let corner = 0; corner < 8; ++corner) {
    for (const bit of [1, 2, 4]) {
      if ((corner & bit) === 0)
        edges.push([corner, corner | bit]);
    }
  }

  const drawLine = (from, to, className) => {
    if (from && to)
      live.draw(drawing, 'line', className, {x1: from[0], y1: from[1], x2: to[0], y2: to[1]});
  };

  const drawCubes = (isStale) => {
    const {before, after, axes} = matrix.draw(400, 320);
    live.fit(drawing, [0, 0, 400, 320], [...before, ...after, ...axes].filter(Boolean));
    drawing.replaceChildren();
    ['axis-x', 'axis-y', 'axis-z'].forEach((axis, index) => drawLine(axes[0], axes[index + 1], axis));
    for (const [from, to] of edges)
      drawLine(before[from], before[to], 'before');
    for (const [from, to] of edges)
      drawLine(after[from], after[to], isStale ? 'after stale' : 'after');
    live.get('matrix-after-key').classList.toggle('stale', isStale);
  };

  const show = (failure) => {
    matrix.getElements().forEach((element, index) => {
      inputs[index].value = String(Number(element.toPrecision(6)));
      inputs[index].removeAttribute('aria-invalid');
    });
    const state = matrix.getState();
    const isStale = matrix.isStale();
    live.get('matrix-state').textContent = state;
    live.get('matrix-determinant').textContent = live.format(matrix.getDeterminant());
    live.get('matrix-stale').textContent = isStale
      ? `Stale: the elements are not those of state ${state}, by which operations go. Classified anew, the matrix is ${matrix.getFreshState()}.`
      : '';
    live.get('matrix-failure').textContent = failure;
    const corners = matrix.getCorners();
    live.setRows(live.get('matrix-corners'), corners.map((corner, index) => {
      const from = [1, 2, 4].map((bit) => (index & bit) === 0 ? -0.5 : 0.5);
      return [live.formatVector(from), live.formatVector(corner)];
    }));
    drawCubes(isStale);
  };

  const operation = live.get('matrix-operation');
  const isRotation = () => operation.value.startsWith('rotate');
  operation.addEventListener('change', () => {
    live.get('matrix-angle-field').hidden = !isRotation();
    live.get('matrix-numbers').hidden = isRotation();
  });

  const multiply = (method) => () => {
    const fields = isRotation() ? ['matrix-angle'] : ['matrix-x', 'matrix-y', 'matrix-z'];
    const numbers = fields.map((id) => live.get(id).valueAsNumber);
    if (numbers.some(Number.isNaN)) {
      live.get('matrix-failure').textContent = 'The operation needs a number in each of its fields.';
      return;
    }
    const [x, y = 0, z = 0] = numbers;
    matrix[method](operation.value, x, y, z);
    show('');
  };
  const onClick = (id, action) => live.get(id).addEventListener('click', action);
  onClick('matrix-right', multiply('multiplyOnTheRight'));
  onClick('matrix-left', multiply('multiplyOnTheLeft'));
  onClick('matrix-transpose', () => { matrix.transpose(); show(''); });
  onClick('matrix-invert', () => show(matrix.invert()));
  onClick('matrix-classify', () => { matrix.classify(); show(''); });
  onClick('matrix-reset', () => { matrix.reset(); show(''); });

  show('');
};
