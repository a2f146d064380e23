/** How far a pressed tab is moved before that counts as dragging it, in pixels. */
const SLACK = 5;

interface Drag {
  readonly from: number;
  /** The row's tabs when the drag began, and where they were. */
  readonly frames: ReadonlyArray<HTMLElement>;
  readonly centres: ReadonlyArray<number>;
  readonly own: number;
  target: number;
}

/** Lets the mouse move a tab within its row; the others make room. `drop` gets its new index. */
export function letDrag(frame: HTMLElement, drop: (index: number) => void): void {
  let pressedAt: number | null = null;
  let drag: Drag | null = null;
  let dragged = false;

  const end = () => {
    for (const one of drag?.frames ?? []) one.style.translate = '';
    frame.classList.remove('is-dragged');
    frame.parentElement?.classList.remove('is-dragging');
    drag = null;
    pressedAt = null;
  };
  frame.addEventListener('pointerdown', ({ button, pointerType, clientX, target }) => {
    dragged = false;
    const isHeld = button === 0 && pointerType !== 'touch' && !(target as Element).closest('.tab-close');
    pressedAt = isHeld ? clientX : null;
  });
  frame.addEventListener('pointermove', ({ clientX, buttons, pointerId }) => {
    if (pressedAt === null) return;
    if (buttons !== 1) return end();
    const by = clientX - pressedAt;
    if (!drag) {
      if (Math.abs(by) < SLACK) return;
      drag = begin(frame, pressedAt);
      dragged = true;
      frame.setPointerCapture(pointerId);
      frame.classList.add('is-dragged');
      frame.parentElement?.classList.add('is-dragging');
    }
    follow(drag, by);
  });
  frame.addEventListener('pointerup', () => {
    const target = drag && drag.target !== drag.own ? drag.target : null;
    end();
    if (target !== null) drop(target);
  });
  frame.addEventListener('pointercancel', end);
  // The press that ends a drag opens nothing.
  frame.addEventListener(
    'click',
    (event) => {
      if (dragged) event.stopPropagation();
      dragged = false;
    },
    { capture: true },
  );
}

function begin(frame: HTMLElement, from: number): Drag {
  const frames = [...(frame.parentElement?.children ?? [])] as HTMLElement[];
  const centres = frames.map(({ offsetLeft, offsetWidth }) => offsetLeft + offsetWidth / 2);
  const own = frames.indexOf(frame);
  return { from, frames, centres, own, target: own };
}

function follow(drag: Drag, by: number): void {
  const { frames, centres, own } = drag;
  const centre = (centres[own] ?? 0) + by;
  const width = frames[own]?.offsetWidth ?? 0;
  drag.target = centres.filter((one, index) => index !== own && one < centre).length;
  frames.forEach((one, index) => {
    const makesRoom = index > own ? index <= drag.target : index >= drag.target;
    if (index === own) one.style.translate = `${by}px`;
    else one.style.translate = makesRoom ? `${index > own ? -width : width}px` : '';
  });
}
