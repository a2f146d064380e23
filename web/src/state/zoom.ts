/** The available text sizes; 1 is the default. */
export const zoomSteps: ReadonlyArray<number> = [0.8, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2];

/** A zoom factor read from a document. */
export function readZoom(value: unknown): number {
  if (typeof value !== 'number' || Number.isNaN(value)) return 1;
  return Math.min(Math.max(value, zoomSteps[0] ?? 1), zoomSteps.at(-1) ?? 1);
}

/** The next larger size for 1, the next smaller for -1; unchanged at either end. */
export function zoomStep(zoom: number, direction: 1 | -1): number {
  const next =
    direction > 0 ? zoomSteps.find((step) => step > zoom) : [...zoomSteps].reverse().find((step) => step < zoom);
  return next ?? zoom;
}
