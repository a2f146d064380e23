/** What a windowed list shows, and what its keys and clicks do. */
export interface WindowedListOptions<Item> {
  /** In pixels; scales with the text size. */
  readonly rowHeight: () => number;
  readonly headingHeight?: () => number;
  readonly idPrefix: string;
  readonly key: (item: Item) => string;
  /** `heading` is the one right above the row, which a screen reader is to say with it; empty if there is none. */
  readonly fill: (row: HTMLElement, item: Item, heading: string) => void;
  readonly onActivate: (item: Item) => void;
  readonly onDelete?: (items: ReadonlyArray<Item>) => void;
  /** Several rows can be selected; called with how many are. */
  readonly onSelected?: (count: number) => void;
  /** A menu is wanted for these items, at this position in the window. */
  readonly onMenu?: (items: ReadonlyArray<Item>, at: { readonly x: number; readonly y: number }) => void;
  /** Escape, or the up arrow on the first row. */
  readonly onLeave: (upwards: boolean) => void;
}
