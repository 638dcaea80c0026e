'use strict';

live.panels.comparison = (library) => {
  const fields = {a: live.get('comparison-a'), b: live.get('comparison-b')};
  const isFloat = () => live.get('comparison-float').checked;

  // A number from its text; also inf, -inf and nan. Nothing for what is none.
  const read = (text) => {
    const word = text.trim().replace('−', '-').toLowerCase();
    const special = /^([+-]?)(?:inf(?:inity)?|∞)$/.exec(word);
    if (special)
      return special[1] === '-' ? -Infinity : Infinity;
    if (word === 'nan')
      return NaN;
    const number = word === '' ? NaN : Number(word);
    return Number.isNaN(number) ? undefined : isFloat() ? Math.fround(number) : number;
  };

  // The shortest text that gives the same number in the chosen precision.
  const write = (number) => {
    if (Object.is(number, -0))
      return '-0';
    if (!isFloat() || !Number.isFinite(number))
      return String(number);
    for (let digits = 1; digits < 9; ++digits) {
      const text = String(Number(number.toPrecision(digits)));
      if (Math.fround(Number(text)) === number)
        return text;
    }
    return String(Number(number.toPrecision(9)));
  };

  const set = (id, text) => {
    live.get(`comparison-${id}`).textContent = text;
  };
  const setAnswer = (id, isYes) => {
    set(id, isYes ? 'yes' : 'no');
    live.get(`comparison-${id}`).classList.toggle('good', isYes);
  };

  const readBoth = () => {
    const numbers = {};
    const wrong = [];
    for (const [name, field] of Object.entries(fields)) {
      numbers[name] = read(field.value);
      field.setAttribute('aria-invalid', String(numbers[name] === undefined));
      if (numbers[name] === undefined)
        wrong.push(name);
    }
    set('failure', wrong.length === 0 ? '' : `${wrong.join(' and ')}: not a number. Write it like 0.1, 1e-3, inf or nan.`);
    return wrong.length === 0 ? numbers : null;
  };

  const show = () => {
    const numbers = readBoth();
    if (numbers === null)
      return;
    const {a, b} = numbers;
    const comparison = isFloat() ? library.compareFloats(a, b) : library.compareDoubles(a, b);
    set('a-value', write(a));
    set('b-value', write(b));
    set('a-bits', comparison.bitsOfA);
    set('b-bits', comparison.bitsOfB);
    set('steps', comparison.steps.replace(/\B(?=(\d{3})+$)/g, ','));
    setAnswer('few-steps', comparison.areFewSteps);
    set('distance', String(comparison.distance));
    set('tolerance', isFloat() ? '1.1920928955078125e-6' : '2.220446049250313e-15');
    setAnswer('small-distance', comparison.isSmallDistance);
    set('result', String(comparison.areEqual));
  };

  const step = (count, isUp) => () => {
    const numbers = readBoth();
    if (numbers === null)
      return;
    let number = numbers.b;
    for (let i = 0; i < count; ++i)
      number = isFloat() ? library.getNextFloat(number, isUp) : library.getNextDouble(number, isUp);
    fields.b.value = write(number);
    show();
  };

  for (const field of Object.values(fields))
    field.addEventListener('input', show);
  for (const id of ['comparison-float', 'comparison-double'])
    live.get(id).addEventListener('change', show);
  live.get('comparison-down').addEventListener('click', step(1, false));
  live.get('comparison-up').addEventListener('click', step(1, true));
  live.get('comparison-up-50').addEventListener('click', step(50, true));
  live.get('comparison-same').addEventListener('click', () => {
    fields.b.value = fields.a.value;
    show();
  });
  show();
};
